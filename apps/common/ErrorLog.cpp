// SPDX-License-Identifier: Apache-2.0
#include "ErrorLog.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <regex>

namespace fs = std::filesystem;

namespace KxApps
{

namespace
{

constexpr std::ptrdiff_t kMostLines = 200;
constexpr size_t kLongestLine = 2000;

std::string Environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

class Descriptor
{
public:
    Descriptor(const std::string& path, int flags)
        : m_number(open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR))
    {}
    ~Descriptor()
    {
        if (m_number >= 0)
            close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Number() const { return m_number; }

private:
    const int m_number;
};

std::string TextOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string WithoutSecrets(const std::string& text)
{
    static const std::regex kSecrets(
        R"re(([\w.-]*(?:passw|secret|token|credential|apikey)[\w.-]*\s*[=:]\s*)("[^"]*"|'[^']*'|\S+))re",
        std::regex::icase);
    static const std::regex kLogin(R"re((\w+://)[^/@\s]+@)re"); // name:password@host
    return std::regex_replace(std::regex_replace(text, kSecrets, "$1***"), kLogin, "$1***@");
}

std::string Line(const std::string& program, std::string text)
{
    text = WithoutSecrets(text.substr(0, kLongestLine));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    char time[32];
    std::strftime(time, sizeof time, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return std::string(time) + "  " + program + "  " + text + "\n";
}

bool IsFull(const std::string& path)
{
    const std::string text = TextOf(path);
    return std::count(text.begin(), text.end(), '\n') >= kMostLines;
}

/// A line that another program adds meanwhile goes into the one or the other file, as each is opened by name
/// and written to once.
void Turn(const std::string& path)
{
    const Descriptor folder(fs::path(path).parent_path().string(), O_RDONLY | O_DIRECTORY);
    // Another one that turns it at this moment does it for both.
    if (flock(folder.Number(), LOCK_EX | LOCK_NB) == 0 && IsFull(path))
        std::rename(path.c_str(), (path + ".1").c_str());
}

void Append(const std::string& path, const std::string& line)
{
    fs::create_directories(fs::path(path).parent_path());
    bool isWritten = false;
    {
        const Descriptor file(path, O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK);
        struct stat facts = {};
        isWritten = fstat(file.Number(), &facts) == 0 && S_ISREG(facts.st_mode) &&
                    write(file.Number(), line.data(), line.size()) > 0;
    }
    if (isWritten && IsFull(path))
        Turn(path);
}

} // namespace

std::string ErrorLogPath()
{
    if (Environment("KXAPI_ERROR_LOG") == "off")
        return "";
    fs::path folder = Environment("XDG_STATE_HOME");
    if (!folder.is_absolute()) {
        const std::string home = Environment("HOME");
        if (home.empty())
            return "";
        folder = fs::path(home) / ".local" / "state";
    }
    return (folder / "KxApi" / "errors.log").string();
}

void LogError(const std::string& program, const std::string& text) noexcept
{
    try {
        static std::mutex mutex;
        static std::string last;
        const std::lock_guard<std::mutex> guard(mutex);
        const std::string path = ErrorLogPath();
        if (path.empty() || text.empty() || text == last)
            return;
        last = text;
        Append(path, Line(program, text));
    } catch (...) { // NOLINT(bugprone-empty-catch): the error itself is what matters
    }
}

std::string ReadErrorLog()
{
    const std::string path = ErrorLogPath();
    return path.empty() ? "" : TextOf(path + ".1") + TextOf(path);
}

} // namespace KxApps
