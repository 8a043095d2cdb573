// The one printf-style formatter that every text passes. The compiler checks formats against arguments, and the
// result is the same on all platforms. 32-bit fields are printed with plain d, u and X, never with "l".
#pragma once

#include <cstdarg>
#include <string>

#if defined(__MINGW32__)
#define PLATFORM_PRINTF(format_at, first_at) __attribute__((format(gnu_printf, format_at, first_at)))
#else
#define PLATFORM_PRINTF(format_at, first_at) __attribute__((format(printf, format_at, first_at)))
#endif

namespace platform {

PLATFORM_PRINTF(1, 2) std::string Format(const char* format, ...);
PLATFORM_PRINTF(1, 0) std::string FormatArguments(const char* format, std::va_list arguments);

// Letters of English only, whatever the locale.
char LowerAscii(char c);
char UpperAscii(char c);
bool EqualIgnoringCase(const std::string& left, const std::string& right);

std::string WithoutTrailingBlanks(const std::string& text);

// Decimal integer at the start of a text: blanks, a sign, digits. Text that is no number reads as 0, a number too
// large for 32 bits as the nearest that fits.
int ReadDecimal(const std::string& text);

}  // namespace platform
