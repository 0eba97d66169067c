// An ARMv4T processor with memory and the program in it. What the program calls of the system ends in a trap,
// where plain code of the tests serves it and the processor goes on.
#pragma once

#include <unicorn/unicorn.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "tests/device/program_file.h"

namespace device {

class Machine {
  public:
    // Called for a trap by its number; its result is what the call returns.
    using Serve = std::function<std::uint32_t(std::uint32_t trap)>;

    // Loads the program at `base`, which need not be its own.
    Machine(const ProgramFile& program, std::uint32_t base, Serve serve);
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    // The address that a call to trap `number` has; 0 to kTraps - 1.
    static constexpr std::uint32_t kTraps = 0x1000;
    [[nodiscard]] static std::uint32_t TrapAddress(std::uint32_t number);
    // Puts that address into the import slot at `rva`.
    void Import(std::uint32_t rva, std::uint32_t number);

    // Calls the program's function with these arguments and gives its result; may be used while a trap is
    // served. Throws std::runtime_error, with the place, when the processor faults.
    std::uint32_t Call(std::uint32_t address, std::initializer_list<std::uint32_t> arguments);
    // The same on a stack of its own, as a thread.
    std::uint32_t CallAsThread(std::uint32_t address, std::uint32_t argument);

    // An exception that leaves `serve` leaves these calls, with the processor as it was before.

    // For a trap that is served: the processor goes on there, with that stack pointer, instead of coming
    // back.
    void GoOnAt(std::uint32_t address, std::uint32_t stack);
    [[nodiscard]] std::uint32_t StackPointer() const;

    // Argument of the call that is served: 0 to 3 in registers, the others on the stack (ARM IHI 0042).
    [[nodiscard]] std::uint32_t Argument(int index) const;

    [[nodiscard]] std::uint32_t Read32(std::uint32_t address) const;
    [[nodiscard]] std::uint16_t Read16(std::uint32_t address) const;
    void Write32(std::uint32_t address, std::uint32_t value);
    void Write16(std::uint32_t address, std::uint16_t value);
    void Write(std::uint32_t address, const void* bytes, std::size_t size);
    [[nodiscard]] std::vector<std::uint8_t> Read(std::uint32_t address, std::size_t size) const;
    // Texts are ASCII in the tests.
    [[nodiscard]] std::string WideText(std::uint32_t address) const;
    [[nodiscard]] std::string NarrowText(std::uint32_t address) const;
    void WriteWide(std::uint32_t address, const std::string& text);

    // Memory that is never given back; aligned to 8 bytes, zeroed.
    std::uint32_t Allocate(std::uint32_t size);
    [[nodiscard]] std::uint32_t SizeOfBlock(std::uint32_t address) const;
    [[nodiscard]] std::uint32_t Base() const { return base_; }

  private:
    std::uint32_t CallOn(std::uint32_t sp, std::uint32_t address,
                         std::initializer_list<std::uint32_t> arguments);
    std::uint32_t Run(std::uint32_t address);
    [[nodiscard]] std::uint32_t Register(int id) const;
    void SetRegister(int id, std::uint32_t value);

    std::uint32_t goOnAt_ = 0;
    uc_engine* cpu_ = nullptr;
    Serve serve_;
    std::uint32_t base_;
    std::uint32_t heap_;
    std::uint32_t stack_;
};

}  // namespace device
