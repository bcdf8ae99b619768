// The sizes of the system's structures that the program fills and hands to Windows, checked when
// the program is built. Each structure's cbSize or dwSize is set from sizeof where it is filled;
// these checks make sure that sizeof is the size Windows expects of a program of that width, so
// that a header or packing change can never make the shipped 32-bit program send a size the
// system refuses (a tray icon that never appears, a process list that stays empty).
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>
#include <tlhelp32.h>

namespace {

constexpr bool thirtyTwoBits = sizeof(void*) == 4;

// The shipped program.
static_assert(!thirtyTwoBits || sizeof(PROCESSENTRY32W) == 556);
static_assert(!thirtyTwoBits || sizeof(NOTIFYICONDATAW) == 956);
static_assert(!thirtyTwoBits || sizeof(TOOLINFOW) == 48);

// The 64-bit build that the tests run: pointers and handles take eight bytes, and the structures
// are aligned to them.
static_assert(thirtyTwoBits || sizeof(PROCESSENTRY32W) == 568);
static_assert(thirtyTwoBits || sizeof(NOTIFYICONDATAW) == 976);
static_assert(thirtyTwoBits || sizeof(TOOLINFOW) == 72);

} // namespace
