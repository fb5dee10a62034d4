// SPDX-License-Identifier: Apache-2.0
// Failures inside the producer; at its border they become codes and texts of GCGetLastError.
#pragma once

#include <GenTL/GenTL.h>

#include <string>

namespace KxProducer
{

/// What any function of the producer may throw.
struct CError
{
    GenTL::GC_ERROR code;
    std::string text;
};

/// Text made as printf makes it.
std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Throws a CError with a text made as printf makes it.
[[noreturn]] void Fail(GenTL::GC_ERROR code, const char* format, ...) __attribute__((format(printf, 2, 3)));

} // namespace KxProducer
