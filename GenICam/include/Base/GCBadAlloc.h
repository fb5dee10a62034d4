// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Lets lack of memory leave a stretch of code as an exception of the GenICam family.

#include <Base/GCException.h>

#include <new>
#include <utility>

namespace GenICam
{
/// Runs a stretch of code so that std::bad_alloc leaves it as BadAllocException with the text of what(); all
/// other exceptions pass unchanged: `return CBadAllocGuard()([&] { return new T(x); });`. Any thread.
struct CBadAllocGuard
{
    template <class Function>
    decltype(auto) operator()(Function&& function) const
    {
        try {
            return std::forward<Function>(function)();
        } catch (const std::bad_alloc& e) {
            throw BAD_ALLOC_EXCEPTION("%s", e.what());
        }
    }
};

/// The function object to call: `GuardBadAlloc([&] { ... })`.
inline constexpr CBadAllocGuard GuardBadAlloc{};
} // namespace GenICam
