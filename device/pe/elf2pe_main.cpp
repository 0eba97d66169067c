// elf2pe PROGRAM.elf RESOURCES.res PROGRAM.exe
#include <cstdio>
#include <fstream>
#include <iterator>

#include "device/pe/program.h"

namespace {

pe::Bytes ReadFile(const char* path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw pe::BadFile(std::string(path) + ": cannot be read");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteFile(const char* path, const pe::Bytes& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw pe::BadFile(std::string(path) + ": cannot be written");
}

}  // namespace

int main(int count, char** words) {
    if (count != 4) {
        std::fprintf(stderr, "usage: elf2pe PROGRAM.elf RESOURCES.res PROGRAM.exe\n");
        return 2;
    }
    try {
        WriteFile(words[3],
                  pe::MakeProgram(pe::ReadElf(ReadFile(words[1]), words[1]), ReadFile(words[2]), words[1]));
        return 0;
    } catch (const pe::BadFile& error) {
        std::fprintf(stderr, "elf2pe: %s\n", error.what());
        return 1;
    }
}
