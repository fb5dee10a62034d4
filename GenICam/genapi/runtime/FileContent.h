// SPDX-License-Identifier: Apache-2.0
// Reading description files, and naming them in errors.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>

#include <string>

namespace KxGenApi
{

/// The bytes of a file; $(NAME) in its name stands for environment variables.
/// Raises InvalidArgumentException for an empty name, RuntimeException for a file that can't be read or is
/// too large.
std::string ReadFile(const GenICam::gcstring& fileName);

/// The exception with a file's name ahead of its text, however long both are.
template <class Exception>
Exception InFile(const GenICam::gcstring& fileName, const Exception& error, const char* type)
{
    const GenICam::gcstring text = fileName + ": " + error.GetDescription();
    return Exception(text.c_str(), error.GetSourceFileName(), static_cast<int>(error.GetSourceLine()), type);
}

/// Runs a function that reads a description; errors of its content leave with the file's name.
template <typename Function>
void NameSource(const GenICam::gcstring& fileName, const Function& function)
{
    try {
        function();
    } catch (const GenICam::PropertyException& error) {
        throw InFile(fileName, error, "PropertyException");
    } catch (const GenICam::RuntimeException& error) {
        throw InFile(fileName, error, "RuntimeException");
    }
}

} // namespace KxGenApi
