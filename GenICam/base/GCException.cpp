// SPDX-License-Identifier: Apache-2.0
#include <Base/GCException.h>

#include <cstdarg>
#include <cstdio>
#include <string>
#include <string_view>

namespace GenICam
{
struct GenericException::CTexts
{
    std::string description;
    std::string sourceFileName;
    unsigned int sourceLine;
    std::string what;
};

namespace
{
unsigned int LineOf(int line) noexcept { return line < 0 ? 0 : static_cast<unsigned int>(line); }

const char* OrEmpty(const char* text) noexcept { return text ? text : ""; }

/// The name of a file without its folders; our own sources are told as folder and name, without an ending.
std::string_view ToldName(std::string_view file) noexcept
{
    const size_t slash = file.rfind('/');
    const std::string_view name = slash == file.npos ? file : file.substr(slash + 1);
    return name.find('.') == name.npos ? file : name;
}

std::string ComposeWhat(const char* description, const char* type, const char* entryPoint,
                        const char* context, const char* file, unsigned int line)
{
    std::string what = OrEmpty(description);
    if (type && *type)
        what.append(" : ").append(type).append(" thrown");
    if (context && *context)
        what.append(" in node '").append(context).append("'");
    if (entryPoint && *entryPoint)
        what.append(" while calling '").append(entryPoint).append("'");
    what.append(" (file '").append(ToldName(OrEmpty(file)));
    return what.append("', line ").append(std::to_string(line)).append(")");
}
} // namespace

GenericException::GenericException(const char* description, const char* sourceFileName,
                                   int sourceLine) noexcept
    : GenericException(description, sourceFileName, sourceLine, nullptr, nullptr, nullptr)
{}

GenericException::GenericException(const char* description, const char* sourceFileName, int sourceLine,
                                   const char* exceptionType) noexcept
    : GenericException(description, sourceFileName, sourceLine, nullptr, nullptr, exceptionType)
{}

GenericException::GenericException(const char* description, const char* sourceFileName, int sourceLine,
                                   const char* entryPoint, const char* errorContext,
                                   const char* exceptionType) noexcept
{
    try {
        m_texts = std::make_shared<const CTexts>(
            CTexts{OrEmpty(description), OrEmpty(sourceFileName), LineOf(sourceLine),
                   ComposeWhat(description, exceptionType, entryPoint, errorContext, sourceFileName,
                               LineOf(sourceLine))});
    } catch (const std::exception&) {
        // An exception that reports lack of memory must come into being without any.
        m_texts.reset();
    }
}

GenericException::~GenericException() noexcept = default;

const char* GenericException::what() const noexcept
{
    return m_texts ? m_texts->what.c_str() : "no memory was left to describe this exception";
}

const char* GenericException::GetDescription() const noexcept
{
    return m_texts ? m_texts->description.c_str() : "no memory was left to describe this exception";
}

const char* GenericException::GetSourceFileName() const noexcept
{
    return m_texts ? m_texts->sourceFileName.c_str() : "";
}

unsigned int GenericException::GetSourceLine() const noexcept { return m_texts ? m_texts->sourceLine : 0; }

// The destructors stand here so that each class has its type information in this library alone.
#define KXGC_DEFINE_EXCEPTION(Name, Base)                                                                    \
    Name::Name(const char* description, const char* sourceFileName, int sourceLine) noexcept                 \
        : Base(description, sourceFileName, sourceLine)                                                      \
    {}                                                                                                       \
    Name::Name(const char* description, const char* sourceFileName, int sourceLine,                          \
               const char* exceptionType) noexcept                                                           \
        : Base(description, sourceFileName, sourceLine, exceptionType)                                       \
    {}                                                                                                       \
    Name::Name(const char* description, const char* sourceFileName, int sourceLine, const char* entryPoint,  \
               const char* errorContext, const char* exceptionType) noexcept                                 \
        : Base(description, sourceFileName, sourceLine, entryPoint, errorContext, exceptionType)             \
    {}                                                                                                       \
    Name::~Name() noexcept = default

KXGC_DEFINE_EXCEPTION(BadAllocException, GenericException);
KXGC_DEFINE_EXCEPTION(InvalidArgumentException, GenericException);
KXGC_DEFINE_EXCEPTION(OutOfRangeException, GenericException);
KXGC_DEFINE_EXCEPTION(PropertyException, GenericException);
KXGC_DEFINE_EXCEPTION(RuntimeException, GenericException);
KXGC_DEFINE_EXCEPTION(LogicalErrorException, GenericException);
KXGC_DEFINE_EXCEPTION(AccessException, GenericException);
KXGC_DEFINE_EXCEPTION(TimeoutException, GenericException);
KXGC_DEFINE_EXCEPTION(DynamicCastException, GenericException);

void Detail::FormatDescription(char* buffer, const char* format, __builtin_va_list arguments) noexcept
{
    if (std::vsnprintf(buffer, kMaxDescription, OrEmpty(format), arguments) < 0)
        buffer[0] = '\0';
}

void Detail::CheckRange(int64_t value, int64_t min, int64_t max, int64_t inc, const char* file, int line)
{
    const ExceptionReporter<OutOfRangeException> reporter(file, line, "OutOfRangeException");
    const auto v = static_cast<long long>(value);
    if (value < min)
        throw reporter.Report("Value = %lld must be equal or greater than Min = %lld", v,
                              static_cast<long long>(min));
    if (value > max)
        throw reporter.Report("Value = %lld must be equal or smaller than Max = %lld", v,
                              static_cast<long long>(max));
    if (inc <= 0)
        throw ExceptionReporter<LogicalErrorException>(file, line, "LogicalErrorException")
            .Report("Inc = %lld must be greater than 0", static_cast<long long>(inc));
    // Unsigned, for value - min may exceed the signed range.
    if ((static_cast<uint64_t>(value) - static_cast<uint64_t>(min)) % static_cast<uint64_t>(inc) != 0)
        throw reporter.Report("Value = %lld must differ from Min = %lld by a multiple of Inc = %lld", v,
                              static_cast<long long>(min), static_cast<long long>(inc));
}

void Detail::CheckRange(double value, double min, double max, const char* file, int line)
{
    const ExceptionReporter<OutOfRangeException> reporter(file, line, "OutOfRangeException");
    if (value < min)
        throw reporter.Report("Value = %f must be equal or greater than Min = %f", value, min);
    if (value > max)
        throw reporter.Report("Value = %f must be equal or smaller than Max = %f", value, max);
}
} // namespace GenICam
