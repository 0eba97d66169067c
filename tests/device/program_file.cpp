#include "tests/device/program_file.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace device {
namespace {

template <typename Number>
Number At(const std::vector<std::uint8_t>& bytes, std::size_t at) {
    if (at > bytes.size() || sizeof(Number) > bytes.size() - at)
        throw std::runtime_error("byte " + std::to_string(at) + " is beyond the end");
    Number number;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    return number;
}

std::string TextAt(const std::vector<std::uint8_t>& bytes, std::size_t at) {
    std::string text;
    for (; At<std::uint8_t>(bytes, at) != 0; ++at) text.push_back(static_cast<char>(bytes[at]));
    return text;
}

}  // namespace

ProgramFile::ProgramFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) throw std::runtime_error(path + " cannot be read: build it with ./kora device");
    file_.assign(std::istreambuf_iterator<char>(stream), {});
    ReadHeaders();
}

void ProgramFile::ReadHeaders() {
    if (At<std::uint16_t>(file_, 0) != 0x5A4D) throw std::runtime_error("is no program");
    const auto pe = At<std::uint32_t>(file_, 0x3C);
    if (At<std::uint32_t>(file_, pe) != 0x4550) throw std::runtime_error("has no PE header");
    machine = At<std::uint16_t>(file_, pe + 4);
    const auto count = At<std::uint16_t>(file_, pe + 6);
    const auto optionalSize = At<std::uint16_t>(file_, pe + 20);
    characteristics = At<std::uint16_t>(file_, pe + 22);
    const std::uint32_t o = pe + 24;
    if (At<std::uint16_t>(file_, o) != 0x10B) throw std::runtime_error("is no 32-bit program");
    entry = At<std::uint32_t>(file_, o + 16);
    base = At<std::uint32_t>(file_, o + 28);
    osMajor = At<std::uint16_t>(file_, o + 40);
    osMinor = At<std::uint16_t>(file_, o + 42);
    subsystemMajor = At<std::uint16_t>(file_, o + 48);
    subsystemMinor = At<std::uint16_t>(file_, o + 50);
    imageSize = At<std::uint32_t>(file_, o + 56);
    subsystem = At<std::uint16_t>(file_, o + 68);
    stack = At<std::uint32_t>(file_, o + 72);

    image_.resize(imageSize);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t row = o + optionalSize + 40 * i;
        FileSection section;
        for (std::uint32_t c = 0; c < 8 && file_[row + c] != 0; ++c)
            section.name.push_back(static_cast<char>(file_[row + c]));
        section.size = At<std::uint32_t>(file_, row + 8);
        section.rva = At<std::uint32_t>(file_, row + 12);
        section.fileSize = At<std::uint32_t>(file_, row + 16);
        section.flags = At<std::uint32_t>(file_, row + 36);
        const auto from = At<std::uint32_t>(file_, row + 20);
        for (std::uint32_t b = 0; b < section.fileSize && b < section.size; ++b)
            image_.at(section.rva + b) = file_.at(from + b);
        sections.push_back(section);
    }
    const auto directory = [&](std::uint32_t i) { return At<std::uint32_t>(file_, o + 96 + 8 * i); };
    const auto directorySize = [&](std::uint32_t i) { return At<std::uint32_t>(file_, o + 100 + 8 * i); };
    ReadImports(directory(1));
    ReadResources(directory(2));
    ReadFunctions(directory(3), directorySize(3));
    ReadFixups(directory(5), directorySize(5));
}

void ProgramFile::ReadImports(std::uint32_t rva) {
    for (; Word(rva + 12) != 0; rva += 20) {
        const std::string dll = TextAt(image_, Word(rva + 12));
        std::uint32_t slot = Word(rva + 16);
        for (std::uint32_t name = Word(rva); Word(name) != 0; name += 4, slot += 4) {
            if (Word(slot) != Word(name))
                throw std::runtime_error("a slot of " + dll + " differs from its name");
            imports.push_back({dll, TextAt(image_, Word(name) + 2), slot});
        }
    }
}

void ProgramFile::ReadFixups(std::uint32_t rva, std::uint32_t size) {
    for (const std::uint32_t end = rva + size; rva < end;) {
        const std::uint32_t page = Word(rva), block = Word(rva + 4);
        if (block < 8) throw std::runtime_error("a block of fixups is too short");
        for (std::uint32_t at = rva + 8; at < rva + block; at += 2) {
            const auto row = At<std::uint16_t>(image_, at);
            if (row >> 12 == 3) fixups.push_back(page + (row & 0xFFF));
            if (row >> 12 != 3 && row != 0) throw std::runtime_error("a fixup is of an unknown kind");
        }
        rva += block;
    }
}

void ProgramFile::ReadFunctions(std::uint32_t rva, std::uint32_t size) {
    for (std::uint32_t at = rva; at < rva + size; at += 8) {
        const std::uint32_t how = Word(at + 4);
        functions.push_back(
            {Word(at), how & 0xFF, how >> 8 & 0x3FFFFF, (how >> 30 & 1) != 0, (how >> 31) != 0});
    }
}

void ProgramFile::ReadResources(std::uint32_t rva) {
    resourceRva_ = rva;
    const auto rows = [&](std::uint32_t table, auto each) {
        const std::uint32_t named = At<std::uint16_t>(image_, rva + table + 12);
        const std::uint32_t all = named + At<std::uint16_t>(image_, rva + table + 14);
        for (std::uint32_t i = named; i < all; ++i)
            each(Word(rva + table + 16 + 8 * i), Word(rva + table + 20 + 8 * i) & 0x7FFFFFFF);
    };
    rows(0, [&](std::uint32_t type, std::uint32_t names) {
        rows(names, [&](std::uint32_t name, std::uint32_t languages) {
            rows(languages, [&](std::uint32_t, std::uint32_t data) {
                resources[{type, name}] = {Word(rva + data), Word(rva + data + 4)};
            });
        });
    });
}

bool ProgramFile::HasNamed(const std::string& type, std::uint32_t id) const {
    const std::uint32_t named = At<std::uint16_t>(image_, resourceRva_ + 12);
    for (std::uint32_t i = 0; i < named; ++i) {
        std::uint32_t text = resourceRva_ + (Word(resourceRva_ + 16 + 8 * i) & 0x7FFFFFFF);
        std::string name;
        for (std::uint32_t left = At<std::uint16_t>(image_, text); left > 0; --left)
            name.push_back(static_cast<char>(At<std::uint16_t>(image_, text += 2)));
        if (name != type) continue;
        const std::uint32_t names = resourceRva_ + (Word(resourceRva_ + 20 + 8 * i) & 0x7FFFFFFF);
        const std::uint32_t all =
            At<std::uint16_t>(image_, names + 12) + At<std::uint16_t>(image_, names + 14);
        for (std::uint32_t row = 0; row < all; ++row) {
            if (Word(names + 16 + 8 * row) == id) return true;
        }
    }
    return false;
}

std::uint32_t ProgramFile::Word(std::uint32_t rva) const {
    return At<std::uint32_t>(image_, rva);
}

const FileSection& ProgramFile::Section(const std::string& name) const {
    for (const FileSection& section : sections) {
        if (section.name == name) return section;
    }
    throw std::runtime_error("has no section " + name);
}

std::vector<std::uint8_t> ProgramFile::LoadedAt(std::uint32_t at) const {
    std::vector<std::uint8_t> image = image_;
    for (const std::uint32_t rva : fixups) {
        const std::uint32_t moved = Word(rva) - base + at;
        std::memcpy(image.data() + rva, &moved, sizeof moved);
    }
    return image;
}

}  // namespace device
