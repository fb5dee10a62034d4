// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <thread>
#include <vector>

namespace KxTest
{

/// Runs a function in so many threads at once, each with its number, and waits for their ends.
template <class Function>
void InThreads(int nThreads, const Function& function)
{
    std::vector<std::thread> threads;
    threads.reserve(static_cast<size_t>(nThreads));
    for (int i = 0; i < nThreads; ++i)
        threads.emplace_back(function, i);
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace KxTest
