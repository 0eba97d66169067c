// Nothing of its own: CMake compiles the headers that all tests share along with it.
