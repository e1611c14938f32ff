// Included before everything else by the build: the C library owns the name `tm` (struct tm), so our namespace of that
// name goes by `tilm`. The standard headers that mention the struct have to come first.
#include <chrono>
#include <ctime>
#include <cwchar>
#include <iomanip>
#include <locale>

#define tm tilm
