// SPDX-License-Identifier: Apache-2.0
// Steps of a longer work that goes on when one of them fails.
#pragma once

#include <Base/GCException.h>
#include <Base/GCStringVector.h>

#include <cxxabi.h>

#include <exception>

namespace KxGenApi
{

/// Runs a function; what it raises becomes a line of `errors`, if there is such a list, and false.
template <typename Function>
bool Attempt(const Function& function, const GenICam::gcstring& prefix, GenICam::gcstring_vector* errors)
{
    const auto tell = [&](const char* what) {
        if (errors != nullptr)
            errors->push_back(prefix + what);
        return false;
    };
    // Ports throw what they like.
    try {
        function();
        return true;
    } catch (const GenICam::GenericException& error) {
        return tell(error.what());
    } catch (const std::exception& error) {
        return tell(error.what());
    } catch (const abi::__forced_unwind&) {
        throw; // the thread is being cancelled
    } catch (...) {
        return tell("an exception of an unknown type");
    }
}

} // namespace KxGenApi
