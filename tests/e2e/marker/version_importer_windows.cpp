// A program that imports version.dll the ordinary way, through its import table: what the panel
// did before it loaded the library from the system folder itself. Laid beside the planted marker,
// it shows that the system takes the marker for such a program in the same folder and with the
// same environment.
#include <windows.h>

int main() {
    DWORD handle = 0;
    return static_cast<int>(
        GetFileVersionInfoSizeW(L"C:\\windows\\system32\\kernel32.dll", &handle) == 0);
}
