// mutate list FILE…         every mutation of these sources, one a line: file, number, line, before, after
// mutate apply FILE NUMBER  the source with that mutation, on the standard output
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>

#include "tests/mutants/mutations.h"

namespace {

int Fail(const char* what, const char* which) {
    std::fprintf(stderr, "mutate: %s: %s\n", which, what);
    return 2;
}

bool Read(const char* path, std::string& text) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    text = bytes.str();
    return static_cast<bool>(file);
}

int List(const char* path) {
    std::string source;
    if (!Read(path, source)) return Fail("cannot be read", path);
    int number = 0;
    for (const mutants::Mutation& mutation : mutants::MutationsOf(source)) {
        std::printf("%s\t%d\t%d\t%s\t%s\n", path, number++, mutation.line, mutation.before.c_str(),
                    mutation.after.empty() ? "(left out)" : mutation.after.c_str());
    }
    return 0;
}

int ApplyOne(const char* path, const char* number) {
    std::string source;
    if (!Read(path, source)) return Fail("cannot be read", path);
    const auto mutations = mutants::MutationsOf(source);
    char* end = nullptr;
    const unsigned long index = std::strtoul(number, &end, 10);
    if (*number == '\0' || *end != '\0' || index >= mutations.size())
        return Fail("has no such mutation", path);
    std::cout << mutants::Apply(source, mutations[index]);
    return 0;
}

}  // namespace

int main(int count, char** words) {
    if (count == 4 && std::strcmp(words[1], "apply") == 0) return ApplyOne(words[2], words[3]);
    if (count < 3 || std::strcmp(words[1], "list") != 0)
        return Fail("list FILE… or apply FILE NUMBER", "usage");
    for (int i = 2; i < count; ++i) {
        if (const int status = List(words[i]); status != 0) return status;
    }
    return 0;
}
