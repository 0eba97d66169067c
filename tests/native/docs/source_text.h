// What the sources of the repository say, as far as the table of promises has to agree with it.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace test {

inline const std::filesystem::path kRoot = KORA_SOURCE_DIR;
inline const std::set<std::string> kApplication = {"shell",    "tuner", "channels", "recording",
                                                   "schedule", "skin",  "resources"};

std::string ReadSource(const std::filesystem::path& file);
// Every C++ file below the folders, in the order of their paths.
std::set<std::filesystem::path> CppFiles(const std::filesystem::path& root,
                                         const std::set<std::string>& folders);

// Comments turned into blanks; with `texts` also what stands between quotation marks.
std::string WithoutComments(const std::string& source, bool texts = false);

// Those lines of a text in which one of the words stands; a regular expression need not look at the others.
std::string LinesWith(const std::string& text, const std::set<std::string>& words);

// "Suite.Test" of every GoogleTest macro of a source file; not those in comments and texts, nor disabled
// ones.
std::set<std::string> TestsOf(const std::string& source);

// The lines that a source file traces, as it spells them: what it hands to the debug output or the console,
// and every other text with the end of a line in it.
std::set<std::string> TracedBy(const std::string& source);

// The most characters that a line traced with this format can have; without a value when it has a text of any
// length in it.
std::optional<std::size_t> MostCharacters(const std::string& format);

// How many comments begin with "Kept:".
int KeptIn(const std::string& source);

}  // namespace test
