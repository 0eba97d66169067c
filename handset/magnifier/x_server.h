// A connection to a display.
#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace magnifier {

struct Freeing {
    void operator()(void* reply) const { std::free(reply); }
};
// What the library hands out by malloc.
template <typename T>
using Reply = std::unique_ptr<T, Freeing>;

class CXServer {
  public:
    // By name (":7"), or the environment's when it is null.
    explicit CXServer(const char* name) : connection_(xcb_connect(name, nullptr)) {}
    ~CXServer() { xcb_disconnect(connection_); }
    CXServer(const CXServer&) = delete;
    CXServer& operator=(const CXServer&) = delete;

    // False when there was no such server, and as soon as it is gone.
    [[nodiscard]] bool Stands() const { return xcb_connection_has_error(connection_) == 0; }
    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    [[nodiscard]] const xcb_setup_t& Setup() const { return *xcb_get_setup(connection_); }
    [[nodiscard]] const xcb_screen_t& Screen() const { return *xcb_setup_roots_iterator(&Setup()).data; }

  private:
    xcb_connection_t* const connection_;  // also one that failed is given back
};

}  // namespace magnifier
