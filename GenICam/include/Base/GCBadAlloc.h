// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Lets lack of memory leave a stretch of code as an exception of the GenICam family.

#include <Base/GCException.h>
#include <Base/GCSourceFile.h>

#include <new>
#include <utility>

namespace GenICam
{
/// Runs a stretch of code so that std::bad_alloc leaves it as BadAllocException with the text of what(),
/// told from the place of the call; all other exceptions pass unchanged:
/// `return GuardBadAlloc([&] { return new T(x); });`. Any thread.
struct CBadAllocGuard
{
    /// @param path,line the caller's, which leaves them out.
    template <class Function>
    auto operator()(Function&& function, const char* path = __builtin_FILE(),
                    int line = __builtin_LINE()) const -> decltype(std::forward<Function>(function)())
    {
        try {
            return std::forward<Function>(function)();
        } catch (const std::bad_alloc& e) {
            Raise(e, path, line);
        }
    }

private:
    // Takes no memory for the name.
    [[noreturn]] static void Raise(const std::bad_alloc& e, const char* path, int line)
    {
#if __cplusplus >= 201703L
        const Detail::CSourceFileName<Detail::kMaxDescription> name{std::string_view(path)};
        path = name.Get();
#endif
        throw ExceptionReporter<BadAllocException>(path, line, "BadAllocException").Report("%s", e.what());
    }
};

/// The function object to call: `GuardBadAlloc([&] { ... })`.
constexpr CBadAllocGuard GuardBadAlloc{};
} // namespace GenICam
