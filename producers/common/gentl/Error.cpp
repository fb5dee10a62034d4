// SPDX-License-Identifier: Apache-2.0

#include "Error.h"

#include <cstdarg>
#include <cstdio>

namespace KxProducer
{
namespace
{

std::string FormatList(const char* format, va_list arguments)
{
    char text[512];
    // The analyzer doesn't follow va_start through a call.
    const int length = // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
        std::vsnprintf(text, sizeof text, format, arguments);
    return length < 0 ? std::string(format) : std::string(text);
}

} // namespace

std::string Format(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = FormatList(format, arguments);
    va_end(arguments);
    return text;
}

void Fail(GenTL::GC_ERROR code, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = FormatList(format, arguments);
    va_end(arguments);
    throw CError{code, std::move(text)};
}

} // namespace KxProducer
