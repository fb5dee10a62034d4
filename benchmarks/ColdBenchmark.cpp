// SPDX-License-Identifier: Apache-2.0
// A whole process that loads a description: libraries loaded and bound, file read, first node got.

#include "LargeDescription.h"

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#ifndef KXAPI_COLD_LIBRARIES
#define KXAPI_COLD_LIBRARIES ""
#endif

namespace
{

// The description as a file, as long as the benchmarks run.
class DescriptionFile
{
public:
    DescriptionFile()
    {
        const std::string& text = Bench::LargeDescription();
        const int file = mkstemp(m_name.data());
        const bool isWritten =
            file >= 0 && write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
        if (file >= 0)
            close(file);
        if (!isWritten)
            throw std::runtime_error(m_name + " can't be written");
    }
    ~DescriptionFile() { unlink(m_name.c_str()); }
    DescriptionFile(const DescriptionFile&) = delete;
    DescriptionFile& operator=(const DescriptionFile&) = delete;

    std::string& Name() { return m_name; }

private:
    std::string m_name = "/tmp/kxapi-bench-XXXXXX";
};

double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

// The processor's time of a child, its kernel's included: others on the machine don't count. Its libraries,
// separated by colons, are loaded from where they lie: the peer's are installed, whereas a search through the
// folders of a build tree takes the loader forty questions to the file system.
double Run(std::string program, std::string& file, const std::string& libraries)
{
    char* arguments[] = {program.data(), file.data(), nullptr};
    std::string preload = "LD_PRELOAD=" + libraries;
    std::vector<char*> environment;
    for (char** variable = environ; *variable != nullptr; ++variable)
        environment.push_back(*variable);
    if (!libraries.empty())
        environment.push_back(preload.data());
    environment.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environment.data()) != 0)
        throw std::runtime_error(program + " can't be started");
    int status = 0;
    rusage used{};
    if (wait4(child, &status, 0, &used) != child || status != 0)
        throw std::runtime_error(program + " failed");
    return Seconds(used.ru_utime) + Seconds(used.ru_stime);
}

void Cold(benchmark::State& state, const char* program, const char* libraries)
{
    static DescriptionFile file;
    for (auto _ : state)
        state.SetIterationTime(Run(program, file.Name(), libraries));
}
BENCHMARK_CAPTURE(Cold, first, KXAPI_COLD_OWN, KXAPI_COLD_LIBRARIES)
    ->Name("Cold/first")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Cold, peer, KXAPI_COLD_PEER, "")
    ->Name("Cold/peer")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Cold, empty, KXAPI_COLD_EMPTY, "")
    ->Name("Cold/empty")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
