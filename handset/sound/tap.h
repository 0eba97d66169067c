// The receiver's sound for other parts of the handset in the same process, such as the audio capture filter:
// what is heard from the radio, at 44.1 kHz, stereo, 16 bits, as loud and as noisy as volume, mute and level
// make it; both sides, whatever the output. Silence while the receiver is off.
//
// Positions count frames on the handset's clock: frame f is heard at f / 44.1 ms of HandsetMilliseconds, at
// any clock rate. Sound is made as the clock goes; nothing is there before its time, and when it is made late
// because the machine is busy it still comes complete.
//
// Any thread but one of the application's inside a platform call that must not wait: a read can block.
#pragma once

#include <cstdint>

extern "C" {

// What the ring holds: frames of 4 s. A reader that is never further behind loses nothing. At clock rate 1
// the oldest frames of a slower reader give way; at a higher rate the sound waits for the slowest reader
// instead.
inline constexpr std::uint32_t kSoundTapCapacity_frames = 4 * 44100;

// Opens a tap. `*position` receives the position of the first frame that it will give. 0 on failure.
std::uint32_t HandsetSoundOpen(std::uint64_t* position);

// Waits at most `timeout_ms` real milliseconds until `frames` frames from `*position` are there, copies what
// there is of them, left and right in turn, and gives their number. `*position` is moved on only when the
// frames there are lost; it then becomes that of the first frame copied. The caller adds what it was given.
// 0 at once when the tap has been closed.
std::uint32_t HandsetSoundRead(std::uint32_t tap, std::uint64_t* position, std::int16_t* samples,
                               std::uint32_t frames, std::uint32_t timeout_ms);

// Closes a tap; a read that is under way returns.
void HandsetSoundClose(std::uint32_t tap);

}  // extern "C"
