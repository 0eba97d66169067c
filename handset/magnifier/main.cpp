// kora-magnifier DISPLAY PICTURE TIMES: shows a virtual display in a window of the user's own one ($DISPLAY),
// 2 or 3 times as large and pixel by pixel, and hands it pointer and keys. PICTURE is the file in which the
// virtual display's server keeps what it shows. Ends with 0 when its window is closed or the virtual display
// is gone.
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "handset/magnifier/framebuffer.h"
#include "handset/magnifier/hands.h"
#include "handset/magnifier/looking_glass.h"
#include "handset/magnifier/x_server.h"

namespace {

constexpr int kFrame_ms = 33;
constexpr int kLeastTimes = 1, kMostTimes = 8;

int Fail(const char* what) {
    std::fprintf(stderr, "kora-magnifier: %s\n", what);
    return 1;
}

class CMappedFile {
  public:
    explicit CMappedFile(const char* path) : file_(open(path, O_RDONLY | O_CLOEXEC)) {
        struct stat about = {};
        if (file_ < 0 || fstat(file_, &about) != 0 || about.st_size <= 0) return;
        size_ = static_cast<std::size_t>(about.st_size);
        bytes_ = mmap(nullptr, size_, PROT_READ, MAP_SHARED, file_, 0);
    }
    ~CMappedFile() {
        if (bytes_ != MAP_FAILED) munmap(bytes_, size_);
        if (file_ >= 0) close(file_);
    }
    CMappedFile(const CMappedFile&) = delete;
    CMappedFile& operator=(const CMappedFile&) = delete;
    // Null when there is none.
    [[nodiscard]] const std::uint8_t* Bytes() const {
        return bytes_ == MAP_FAILED ? nullptr : static_cast<const std::uint8_t*>(bytes_);
    }
    [[nodiscard]] std::size_t Size() const { return size_; }

  private:
    int file_;
    std::size_t size_ = 0;
    void* bytes_ = MAP_FAILED;
};

// As their connections say, of which the virtual display's is read for nothing else.
bool BothStand(const magnifier::CXServer& user, const magnifier::CXServer& shown) {
    while (const magnifier::Reply<xcb_generic_event_t> event{xcb_poll_for_event(shown.get())}) {
    }
    return user.Stands() && shown.Stands();
}

// Until the user does something, but no longer than a frame takes.
void Await(const magnifier::CXServer& user) {
    pollfd from = {xcb_get_file_descriptor(user.get()), POLLIN, 0};
    poll(&from, 1, kFrame_ms);
}

}  // namespace

int main(int count, char** words) {
    using namespace magnifier;
    if (count != 4) return Fail("wants DISPLAY PICTURE TIMES");
    const int times = std::atoi(words[3]);
    if (times < kLeastTimes || times > kMostTimes) return Fail("enlarges 1 to 8 times");
    const CXServer user(nullptr), shown(words[1]);
    if (!user.Stands()) return Fail("there is no display to show it on");
    if (!shown.Stands()) return Fail("there is no such virtual display");
    const CMappedFile file(words[2]);
    const auto picture = ReadFramebuffer(file.Bytes(), file.Size());
    if (!picture) return Fail("the virtual display's picture cannot be read");
    CHands hands(user, shown);
    CLookingGlass glass(user, *picture, times, hands);
    if (!glass.Fits()) return Fail("the display has not the 24 bits of colour that this takes");
    glass.Open("Kora handset");
    while (BothStand(user, shown) && glass.Serve()) {
        glass.Refresh();
        Await(user);
    }
    return 0;
}
