// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <iterator>
#include <thread>

namespace KxTest
{

/// Threads of the process. Sanitizers start one of their own with the first that the program starts, which is
/// not to count as one that is left.
inline size_t ThreadCount()
{
    static const bool isFirstOver = [] {
        std::thread([] {}).join();
        return true;
    }();
    static_cast<void>(isFirstOver);
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return static_cast<size_t>(std::distance(begin(tasks), end(tasks)));
}

} // namespace KxTest
