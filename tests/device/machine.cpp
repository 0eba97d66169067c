#include "tests/device/machine.h"

#include <sstream>
#include <stdexcept>

namespace device {
namespace {

constexpr std::uint32_t kPage = 0x1000;
constexpr std::uint32_t kStacks = 0x08000000, kStackSize = 0x100000, kMostStacks = 16;
constexpr std::uint32_t kHeap = 0x10000000, kHeapSize = 0x4000000;
constexpr std::uint32_t kTrapPages = 0x30000000;
// Where a call of ours returns to: the first word behind the traps.
constexpr std::uint32_t kReturn = kTrapPages + 4 * Machine::kTraps;

void Check(uc_err error, const char* what) {
    if (error != UC_ERR_OK) throw std::runtime_error(std::string(what) + ": " + uc_strerror(error));
}

std::string Hex(std::uint32_t value) {
    std::ostringstream text;
    text << "0x" << std::hex << value;
    return text.str();
}

void StopAtTrap(uc_engine* cpu, std::uint64_t, std::uint32_t, void*) {
    uc_emu_stop(cpu);
}

}  // namespace

Machine::Machine(const ProgramFile& program, std::uint32_t base, Serve serve)
    : serve_(std::move(serve)), base_(base), heap_(kHeap), stack_(kStacks + kStackSize * kMostStacks - 64) {
    Check(uc_open(UC_ARCH_ARM, UC_MODE_ARM, &cpu_), "the processor");
    // The phone's kind: instructions of later ones are undefined.
    Check(uc_ctl_set_cpu_model(cpu_, UC_CPU_ARM_TI925T), "the processor's model");
    const std::vector<std::uint8_t> image = program.LoadedAt(base);
    const std::uint32_t size = (program.imageSize + kPage - 1) / kPage * kPage;
    Check(uc_mem_map(cpu_, base, size, UC_PROT_ALL), "memory for the program");
    Check(uc_mem_write(cpu_, base, image.data(), image.size()), "the program");
    Check(uc_mem_map(cpu_, kStacks, kStackSize * kMostStacks, UC_PROT_READ | UC_PROT_WRITE), "the stacks");
    Check(uc_mem_map(cpu_, kHeap, kHeapSize, UC_PROT_READ | UC_PROT_WRITE), "the heap");
    Check(uc_mem_map(cpu_, kTrapPages, 4 * kTraps + kPage, UC_PROT_ALL), "the traps");
    uc_hook hook = 0;
    Check(uc_hook_add(cpu_, &hook, UC_HOOK_CODE, reinterpret_cast<void*>(StopAtTrap), nullptr, kTrapPages,
                      kReturn),
          "the traps");
}

Machine::~Machine() {
    uc_close(cpu_);
}

std::uint32_t Machine::TrapAddress(std::uint32_t number) {
    return kTrapPages + 4 * number;
}

void Machine::Import(std::uint32_t rva, std::uint32_t number) {
    Write32(base_ + rva, TrapAddress(number));
}

std::uint32_t Machine::Register(int id) const {
    std::uint32_t value = 0;
    Check(uc_reg_read(cpu_, id, &value), "a register");
    return value;
}

void Machine::SetRegister(int id, std::uint32_t value) {
    Check(uc_reg_write(cpu_, id, &value), "a register");
}

// Runs until the return to us; traps on the way are served. Several runs may be nested, one for each call of
// ours.
std::uint32_t Machine::Run(std::uint32_t address) {
    for (;;) {
        const uc_err error = uc_emu_start(cpu_, address, 0xFFFFFFFF, 0, 0);
        const std::uint32_t at = Register(UC_ARM_REG_PC);
        if (error != UC_ERR_OK)
            throw std::runtime_error(std::string(uc_strerror(error)) + " at " + Hex(at - base_) +
                                     " of the image, called from " + Hex(Register(UC_ARM_REG_LR) - base_));
        if (at == kReturn) return Register(UC_ARM_REG_R0);
        if (at < kTrapPages || at > kReturn) throw std::runtime_error("the processor stopped at " + Hex(at));
        const std::uint32_t result = serve_((at - kTrapPages) / 4);
        SetRegister(UC_ARM_REG_R0, result);
        address = goOnAt_ != 0 ? goOnAt_ : Register(UC_ARM_REG_LR) & ~1U;
        goOnAt_ = 0;
    }
}

// The processor's state, put back when the scope ends, also by an exception.
class KeptState {
  public:
    explicit KeptState(uc_engine* cpu) : cpu_(cpu) {
        Check(uc_context_alloc(cpu_, &state_), "the processor's state");
        uc_context_save(cpu_, state_);
    }
    ~KeptState() {
        uc_context_restore(cpu_, state_);
        uc_context_free(state_);
    }
    KeptState(const KeptState&) = delete;
    KeptState& operator=(const KeptState&) = delete;

  private:
    uc_engine* cpu_;
    uc_context* state_ = nullptr;
};

std::uint32_t Machine::Call(std::uint32_t address, std::initializer_list<std::uint32_t> arguments) {
    const KeptState kept(cpu_);
    const std::uint32_t outer = Register(UC_ARM_REG_SP);
    return CallOn(outer != 0 ? outer : stack_, address, arguments);
}

std::uint32_t Machine::CallAsThread(std::uint32_t address, std::uint32_t argument) {
    const KeptState kept(cpu_);
    struct OwnStack {
        std::uint32_t& top;
        explicit OwnStack(std::uint32_t& stack) : top(stack) { top -= kStackSize; }
        ~OwnStack() { top += kStackSize; }
    } own(stack_);
    return CallOn(stack_, address, {argument});
}

std::uint32_t Machine::CallOn(std::uint32_t sp, std::uint32_t address,
                              std::initializer_list<std::uint32_t> arguments) {
    const std::size_t onStack = arguments.size() > 4 ? arguments.size() - 4 : 0;
    sp = (sp & ~7U) - static_cast<std::uint32_t>((4 * onStack + 7) & ~std::size_t{7});
    int index = 0;
    for (const std::uint32_t value : arguments) {
        if (index < 4) {
            SetRegister(UC_ARM_REG_R0 + index, value);
        } else {
            Write32(sp + 4 * static_cast<std::uint32_t>(index - 4), value);
        }
        ++index;
    }
    SetRegister(UC_ARM_REG_SP, sp);
    SetRegister(UC_ARM_REG_LR, kReturn);
    const std::uint32_t result = Run(address);
    if (Register(UC_ARM_REG_SP) != sp)
        throw std::runtime_error("a call of " + Hex(address - base_) + " moved the stack");
    return result;
}

void Machine::GoOnAt(std::uint32_t address, std::uint32_t stack) {
    goOnAt_ = address;
    SetRegister(UC_ARM_REG_SP, stack);
}

std::uint32_t Machine::StackPointer() const {
    return Register(UC_ARM_REG_SP);
}

std::uint32_t Machine::Argument(int index) const {
    if (index < 4) return Register(UC_ARM_REG_R0 + index);
    return Read32(Register(UC_ARM_REG_SP) + 4 * static_cast<std::uint32_t>(index - 4));
}

std::vector<std::uint8_t> Machine::Read(std::uint32_t address, std::size_t size) const {
    std::vector<std::uint8_t> bytes(size);
    if (uc_mem_read(cpu_, address, bytes.data(), size) != UC_ERR_OK)
        throw std::runtime_error("the program gave " + Hex(address) + ", where nothing is");
    return bytes;
}

void Machine::Write(std::uint32_t address, const void* bytes, std::size_t size) {
    if (uc_mem_write(cpu_, address, bytes, size) != UC_ERR_OK)
        throw std::runtime_error("the program wants " + Hex(address) + " written, where nothing is");
}

std::uint32_t Machine::Read32(std::uint32_t address) const {
    const std::vector<std::uint8_t> b = Read(address, 4);
    return static_cast<std::uint32_t>(b[0] | b[1] << 8 | b[2] << 16) | static_cast<std::uint32_t>(b[3]) << 24;
}

std::uint16_t Machine::Read16(std::uint32_t address) const {
    const std::vector<std::uint8_t> b = Read(address, 2);
    return static_cast<std::uint16_t>(b[0] | b[1] << 8);
}

void Machine::Write32(std::uint32_t address, std::uint32_t value) {
    Write(address, &value, sizeof value);
}

void Machine::Write16(std::uint32_t address, std::uint16_t value) {
    Write(address, &value, sizeof value);
}

std::string Machine::WideText(std::uint32_t address) const {
    std::string text;
    for (; const std::uint16_t unit = Read16(address); address += 2)
        text.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
    return text;
}

std::string Machine::NarrowText(std::uint32_t address) const {
    std::string text;
    for (; const std::uint8_t byte = Read(address, 1)[0]; ++address) text.push_back(static_cast<char>(byte));
    return text;
}

void Machine::WriteWide(std::uint32_t address, const std::string& text) {
    for (const char c : text) {
        Write16(address, static_cast<std::uint8_t>(c));
        address += 2;
    }
    Write16(address, 0);
}

std::uint32_t Machine::Allocate(std::uint32_t size) {
    const std::uint32_t block = heap_ + 8;
    if (size > kHeap + kHeapSize - block) throw std::runtime_error("the heap is full");
    Write32(heap_, size);
    heap_ = (block + size + 7) & ~7U;
    return block;
}

std::uint32_t Machine::SizeOfBlock(std::uint32_t address) const {
    return Read32(address - 8);
}

}  // namespace device
