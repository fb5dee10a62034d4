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

/// Runs a function that reads a description; errors of its content leave with the file's name ahead of their
/// text.
template <typename Function>
void NameSource(const GenICam::gcstring& fileName, const Function& function)
{
    try {
        function();
    } catch (const GenICam::PropertyException& error) {
        throw PROPERTY_EXCEPTION("%s: %s", fileName.c_str(), error.GetDescription());
    } catch (const GenICam::RuntimeException& error) {
        throw RUNTIME_EXCEPTION("%s: %s", fileName.c_str(), error.GetDescription());
    }
}

} // namespace KxGenApi
