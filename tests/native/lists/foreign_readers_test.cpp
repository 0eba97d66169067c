// What programs that are not ours read in the files: jq and Python's reader of CSV.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

#include "handset/base/utf8.h"
#include "handset/lists/csv_lists.h"
#include "handset/lists/json_lists.h"
#include "tests/native/lists/sample_lists.h"

namespace {

class File {
  public:
    explicit File(const std::string& bytes)
        : path_(std::filesystem::temp_directory_path() / ("kora-lists-" + std::to_string(getpid()))) {
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    ~File() { std::filesystem::remove(path_); }
    std::string Path() const { return path_.string(); }

  private:
    std::filesystem::path path_;
};

std::string Output(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    char piece[4096];
    for (std::size_t read = 0; (read = fread(piece, 1, sizeof piece, pipe.get())) > 0;)
        output.append(piece, read);
    return output;
}

// One text after another, each with a mark behind it that no text has.
std::string Texts(const std::vector<lists::ChannelList>& lists) {
    std::string texts;
    for (const lists::ChannelList& list : lists) {
        for (const lists::Channel& channel : list.channels) {
            for (const std::u16string& text : {list.name, channel.name, channel.guide})
                texts += handset::Utf8(text) + "<|>";
            texts += std::to_string(channel.frequency_10kHz) + "<|>";
        }
    }
    return texts;
}

}  // namespace

TEST(ForeignReaders, JqFindsEveryTextAndFrequencyInTheJson) {
    const File file(lists::WriteJson(AwkwardLists()));
    EXPECT_EQ(Output("jq -j '.lists[] | .name as $list | .channels[] | [$list, .name, .guide, "
                     "(.frequency * 100 | round | tostring)] | map(. + \"<|>\") | add' " +
                     file.Path()),
              Texts(AwkwardLists()));
}

TEST(ForeignReaders, WhatJqWritesIsReadAgain) {
    const File file(lists::WriteJson(AwkwardLists()));
    EXPECT_TRUE(SameLists(lists::ReadJson(Output("jq -c . " + file.Path())).lists, AwkwardLists()));
}

TEST(ForeignReaders, PythonFindsEveryTextAndFrequencyInTheCsv) {
    const File file(lists::WriteCsvLists(AwkwardLists()));
    EXPECT_EQ(Output("python3 -c \"\nimport csv, sys\n"
                     "for row in csv.DictReader(open(sys.argv[1], encoding='utf-8', newline='')):\n"
                     "    if row['Frequency']:\n"
                     "        for text in (row['List'], row['Name'], row['Guide'], str(int(row['Frequency']) "
                     "// 10000)):\n"
                     "            sys.stdout.buffer.write((text + '<|>').encode('utf-8'))\n\" " +
                     file.Path()),
              Texts(AwkwardLists()));
}

TEST(ForeignReaders, WhatPythonWritesIsReadAgain) {
    const File file(lists::WriteCsvLists(AwkwardLists()));
    const std::string written = Output(
        "python3 -c \"\nimport csv, io, sys\n"
        "out = io.StringIO(newline='')\n"
        "csv.writer(out, delimiter=';').writerows(csv.reader(open(sys.argv[1], encoding='utf-8', "
        "newline='')))\n"
        "sys.stdout.buffer.write(out.getvalue().encode('utf-8'))\n\" " +
        file.Path());
    EXPECT_TRUE(SameLists(lists::ReadCsvLists(written).lists, AwkwardLists()));
}
