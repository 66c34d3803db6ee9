// The bounds that keep any script from harming the process, each with its reason.
#ifndef RK_VBSCRIPT_LIMITS_H_
#define RK_VBSCRIPT_LIMITS_H_

#include <cstddef>
#include <cstdint>

namespace rk::vbscript {

// Stack of a thread that runs pages. A script call takes under 1 KiB in a release build and about
// 6 KiB under AddressSanitizer, so this allows thousands of nested calls in either.
inline constexpr std::size_t kPageThreadStackBytes = std::size_t{16} << 20;

// What a script leaves untouched at the end of the stack: an operation that a script calls
// (a database engine, a regular expression) must find room beneath it.
inline constexpr std::size_t kStackReserveBytes = std::size_t{512} << 10;

// Nested calls in all, whatever the stack: registers of frames live on the heap and count too.
inline constexpr int kMaxCallDepth = 100000;

// Loop turns and calls between two looks at the page's time: some 50 microseconds of script, far
// below what a visitor notices, and too rare to be measured.
inline constexpr int kTurnsBetweenTimeChecks = 2048;

// Brackets and blocks inside one another. The parser and the compiler recurse over them, with
// under 1 KiB a level; hand-written pages stay below 40.
inline constexpr int kMaxNesting = 256;

// Links of one chain such as a.b(1).c; the compiler recurses over them too.
inline constexpr int kMaxLinks = 500;

// Characters of a name, as in the language.
inline constexpr std::size_t kMaxNameLength = 255;

// Stack that Execute and Eval ask for before they compile: kMaxNesting levels of the parser and the
// compiler at up to 6 KiB each under AddressSanitizer.
inline constexpr std::size_t kCompileStackBytes = std::size_t{2} << 20;

// What the variables, arrays, texts and objects of one page may hold in all: more than the largest
// array (half a GiB) beside texts, and little enough that the pages of a site fit a machine.
inline constexpr std::size_t kMaxPageMemoryBytes = std::size_t{1} << 30;

// What a page may make between two counts of its memory, at least: counting looks at every
// variable, so it may only come after much work.
inline constexpr std::size_t kBytesBetweenCounts = std::size_t{64} << 20;

// What one loop turn or call is taken to make beyond what is measured.
inline constexpr std::size_t kBytesOfTurn = 256;

// The lowest address that scripts on this thread may let the stack reach. Asks the system once a
// call; a thread that runs many pages asks once and keeps the answer.
std::uintptr_t stack_floor_of_this_thread();

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_LIMITS_H_
