// SPDX-License-Identifier: Apache-2.0
// Programs as their users meet them: run, with output and exit code looked at.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace KxTest
{

struct Outcome
{
    int exitCode = -1;
    std::string output;
    std::string errors;
};

inline std::string ContentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline std::vector<std::string> LinesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// Runs programs in a folder of the test's own.
class ProgramTest : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = (std::filesystem::temp_directory_path() / "kx-tests-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_folder = name;
    }
    void TearDown() override { std::filesystem::remove_all(m_folder); }

    /// Errors are logged in the test's folder.
    /// @param environment such as "NAME=value NAME2=value "
    Outcome RunProgram(const std::string& program, const std::string& arguments,
                       const std::string& environment = "") const
    {
        const std::string command = "cd " + m_folder.string() + " && export XDG_STATE_HOME=$PWD/state && " +
                                    environment + "'" + program + "' " + arguments +
                                    " >output.txt 2>errors.txt </dev/null";
        const int status = std::system(command.c_str());
        Outcome outcome;
        outcome.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        outcome.output = ContentOf(m_folder / "output.txt");
        outcome.errors = ContentOf(m_folder / "errors.txt");
        return outcome;
    }

    std::filesystem::path m_folder;
};

} // namespace KxTest
