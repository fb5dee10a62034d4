// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// The exceptions of the GenICam family, and the macros that make them.
///
/// All are thrown by value: `throw OUT_OF_RANGE_EXCEPTION("%s = %d must be smaller than %d", name, value,
/// limit);` They can be caught by class in any library, and are not derived from std::exception.

#include <Base/GCSourceFile.h>
#include <Base/GCTypes.h>

#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

namespace GenICam
{
/// Base of the family: what went wrong, and where. Copies share their texts and never fail.
class GCBASE_RTTI_CLASS_API GenericException
{
public:
    /// All texts are copied. Should the memory for that be missing, the exception tells of it instead.
    GenericException(const char* description, const char* sourceFileName, int sourceLine) noexcept;
    GenericException(const char* description, const char* sourceFileName, int sourceLine,
                     const char* exceptionType) noexcept;
    /// As above, thrown out of the call `entryPoint` ("Gain.SetValue()") of the node or object
    /// `errorContext`.
    GenericException(const char* description, const char* sourceFileName, int sourceLine,
                     const char* entryPoint, const char* errorContext, const char* exceptionType) noexcept;
    GenericException(const GenericException&) noexcept = default;
    GenericException& operator=(const GenericException&) noexcept = default;
    virtual ~GenericException() noexcept;

    /// Description, class, node and call where known, and place in the source.
    virtual const char* what() const noexcept;
    /// The description alone.
    virtual const char* GetDescription() const noexcept;
    virtual const char* GetSourceFileName() const noexcept;
    virtual unsigned int GetSourceLine() const noexcept;

private:
    struct CTexts;
    std::shared_ptr<const CTexts> m_texts; // null when there was no memory for them
};

#define KXGC_DECLARE_EXCEPTION(Name, Base)                                                                   \
    class GCBASE_RTTI_CLASS_API Name : public Base                                                           \
    {                                                                                                        \
    public:                                                                                                  \
        Name(const char* description, const char* sourceFileName, int sourceLine) noexcept;                  \
        Name(const char* description, const char* sourceFileName, int sourceLine,                            \
             const char* exceptionType) noexcept;                                                            \
        Name(const char* description, const char* sourceFileName, int sourceLine, const char* entryPoint,    \
             const char* errorContext, const char* exceptionType) noexcept;                                  \
        Name(const Name&) noexcept = default;                                                                \
        Name& operator=(const Name&) noexcept = default;                                                     \
        ~Name() noexcept override;                                                                           \
    }

/// Memory could not be had.
KXGC_DECLARE_EXCEPTION(BadAllocException, GenericException);
/// An argument has a value that makes no sense here.
KXGC_DECLARE_EXCEPTION(InvalidArgumentException, GenericException);
/// An argument lies outside the allowed range.
KXGC_DECLARE_EXCEPTION(OutOfRangeException, GenericException);
/// A property of a node in a description cannot be used.
KXGC_DECLARE_EXCEPTION(PropertyException, GenericException);
/// Something failed that depends on the world outside the program.
KXGC_DECLARE_EXCEPTION(RuntimeException, GenericException);
/// Program or description contradict themselves.
KXGC_DECLARE_EXCEPTION(LogicalErrorException, GenericException);
/// The access mode forbids the call.
KXGC_DECLARE_EXCEPTION(AccessException, GenericException);
/// An answer did not come in time.
KXGC_DECLARE_EXCEPTION(TimeoutException, GenericException);
/// A pointer is not of the wanted interface.
KXGC_DECLARE_EXCEPTION(DynamicCastException, GenericException);

#undef KXGC_DECLARE_EXCEPTION

namespace Detail
{
/// Longest description that a reporter formats, the closing NUL counted; longer ones are cut.
constexpr size_t kMaxDescription = 256;

/// Writes the formatted text into `buffer` of kMaxDescription bytes.
__attribute__((format(printf, 2, 0))) GCBASE_API void FormatDescription(char* buffer, const char* format,
                                                                        __builtin_va_list arguments) noexcept;
} // namespace Detail

/// Makes exceptions of class E, for the caller to throw. The texts given must outlive the reporter.
template <class E>
class ExceptionReporter
{
public:
    /// `entryPoint` and `errorContext` name the call and the node, where there are such.
    ExceptionReporter(const char* sourceFileName, int sourceLine, const char* exceptionType = nullptr,
                      const char* entryPoint = nullptr, const char* errorContext = nullptr) noexcept
        : m_sourceFileName(sourceFileName)
        , m_sourceLine(sourceLine)
        , m_exceptionType(exceptionType)
        , m_entryPoint(entryPoint)
        , m_errorContext(errorContext)
    {}

    /// Formats as printf does, at most 256 bytes.
    __attribute__((format(printf, 2, 3))) E Report(const char* format, ...) const;
    /// Without a description, or with one that is taken as it is.
    E Report() const { return Make(""); }
    E Report(const std::string& description) const { return Make(description.c_str()); }
    E Report(const std::stringstream& description) const { return Make(description.str().c_str()); }

private:
    typedef std::is_constructible<E, const char*, const char*, int, const char*, const char*, const char*>
        KnowsNodes;

    E Make(const char* description) const { return Make(description, KnowsNodes()); }
    E Make(const char* description, std::true_type) const
    {
        if (m_entryPoint || m_errorContext)
            return E(description, m_sourceFileName, m_sourceLine, m_entryPoint, m_errorContext,
                     m_exceptionType);
        return Make(description, std::false_type());
    }
    // Exception classes outside the family's core need not know of calls and nodes, nor do without a type.
    E Make(const char* description, std::false_type) const
    {
        return m_exceptionType ? E(description, m_sourceFileName, m_sourceLine, m_exceptionType)
                               : MakePlain<E>(description, 0);
    }
    template <class Plain>
    auto MakePlain(const char* description, int) const
        -> decltype(Plain(description, static_cast<const char*>(nullptr), 0))
    {
        return Plain(description, m_sourceFileName, m_sourceLine);
    }
    template <class Plain>
    Plain MakePlain(const char* description, long) const
    {
        return Plain(description, m_sourceFileName, m_sourceLine, "");
    }

    const char* m_sourceFileName;
    int m_sourceLine;
    const char* m_exceptionType;
    const char* m_entryPoint;
    const char* m_errorContext;
};

template <class E>
E ExceptionReporter<E>::Report(const char* format, ...) const
{
    char description[Detail::kMaxDescription];
    __builtin_va_list arguments;
    __builtin_va_start(arguments, format);
    Detail::FormatDescription(description, format, arguments);
    __builtin_va_end(arguments);
    return Make(description);
}
} // namespace GenICam

/// Declares an exception class of a program's own.
#define DECLARE_EXCEPTION(name)                                                                              \
    class name : public ::GenICam::GenericException                                                          \
    {                                                                                                        \
    public:                                                                                                  \
        name(const char* description, const char* sourceFileName, int sourceLine)                            \
            : ::GenICam::GenericException(description, sourceFileName, sourceLine)                           \
        {}                                                                                                   \
        name(const char* description, const char* sourceFileName, int sourceLine, const char* exceptionType) \
            : ::GenICam::GenericException(description, sourceFileName, sourceLine, exceptionType)            \
        {}                                                                                                   \
        name(const char* description, const char* sourceFileName, int sourceLine, const char* entryPoint,    \
             const char* errorContext, const char* exceptionType)                                            \
            : ::GenICam::GenericException(description, sourceFileName, sourceLine, entryPoint, errorContext, \
                                          exceptionType)                                                     \
        {}                                                                                                   \
    }

/// A reporter for the place where this stands; `Class` is an exception class of namespace GenICam.
#define KXGC_REPORTER(Class)                                                                                 \
    ::GenICam::ExceptionReporter<::GenICam::Class>(KXGC_SOURCE_FILE, __LINE__, #Class)
/// As above, with the call and the node in which it happens.
#define KXGC_NODE_REPORTER(Class, entryPoint, node)                                                          \
    ::GenICam::ExceptionReporter<::GenICam::Class>(KXGC_SOURCE_FILE, __LINE__, #Class, entryPoint, node)

#define GENERIC_EXCEPTION                                                                                    \
    ::GenICam::ExceptionReporter<::GenICam::GenericException>(KXGC_SOURCE_FILE, __LINE__).Report
#define BAD_ALLOC_EXCEPTION KXGC_REPORTER(BadAllocException).Report
#define INVALID_ARGUMENT_EXCEPTION KXGC_REPORTER(InvalidArgumentException).Report
#define OUT_OF_RANGE_EXCEPTION KXGC_REPORTER(OutOfRangeException).Report
#define PROPERTY_EXCEPTION KXGC_REPORTER(PropertyException).Report
#define RUNTIME_EXCEPTION KXGC_REPORTER(RuntimeException).Report
#define LOGICAL_ERROR_EXCEPTION KXGC_REPORTER(LogicalErrorException).Report
#define ACCESS_EXCEPTION KXGC_REPORTER(AccessException).Report
#define TIMEOUT_EXCEPTION KXGC_REPORTER(TimeoutException).Report
#define DYNAMICCAST_EXCEPTION KXGC_REPORTER(DynamicCastException).Report

/// The same for an error in a node: `throw ACCESS_EXCEPTION_NODE(call, node)("format", ...)`.
#define GENERIC_EXCEPTION_NODE(entryPoint, node) KXGC_NODE_REPORTER(GenericException, entryPoint, node).Report
#define BAD_ALLOC_EXCEPTION_NODE(entryPoint, node)                                                           \
    KXGC_NODE_REPORTER(BadAllocException, entryPoint, node).Report
#define INVALID_ARGUMENT_EXCEPTION_NODE(entryPoint, node)                                                    \
    KXGC_NODE_REPORTER(InvalidArgumentException, entryPoint, node).Report
#define OUT_OF_RANGE_EXCEPTION_NODE(entryPoint, node)                                                        \
    KXGC_NODE_REPORTER(OutOfRangeException, entryPoint, node).Report
#define PROPERTY_EXCEPTION_NODE(entryPoint, node)                                                            \
    KXGC_NODE_REPORTER(PropertyException, entryPoint, node).Report
#define RUNTIME_EXCEPTION_NODE(entryPoint, node) KXGC_NODE_REPORTER(RuntimeException, entryPoint, node).Report
#define LOGICAL_ERROR_EXCEPTION_NODE(entryPoint, node)                                                       \
    KXGC_NODE_REPORTER(LogicalErrorException, entryPoint, node).Report
#define ACCESS_EXCEPTION_NODE(entryPoint, node) KXGC_NODE_REPORTER(AccessException, entryPoint, node).Report
#define TIMEOUT_EXCEPTION_NODE(entryPoint, node) KXGC_NODE_REPORTER(TimeoutException, entryPoint, node).Report
#define DYNAMICCAST_EXCEPTION_NODE(entryPoint, node)                                                         \
    KXGC_NODE_REPORTER(DynamicCastException, entryPoint, node).Report

namespace GenICam
{
namespace Detail
{
/// Raises OutOfRangeException when `value` lies outside min..max or off the grid of `inc` from `min`, and
/// LogicalErrorException when `inc` isn't positive. `file` and `line` are the caller's.
GCBASE_API void CheckRange(int64_t value, int64_t min, int64_t max, int64_t inc, const char* file, int line);
/// The same for floating point, without a grid. NaN passes, the infinities don't.
GCBASE_API void CheckRange(double value, double min, double max, const char* file, int line);
} // namespace Detail
} // namespace GenICam

/// Raise OutOfRangeException, which tells value and limit, when a value is not in its range.
#define CHECK_RANGE_I64(value, min, max, inc)                                                                \
    ::GenICam::Detail::CheckRange(value, min, max, inc, KXGC_SOURCE_FILE, __LINE__)
#define CHECK_RANGE_FLT(value, min, max)                                                                     \
    ::GenICam::Detail::CheckRange(value, min, max, KXGC_SOURCE_FILE, __LINE__)

/// Raises LogicalErrorException when a cast has found no interface.
#define CHECK_DYNAMIC_CAST_POINTER(pointer)                                                                  \
    do {                                                                                                     \
        if ((pointer) == nullptr)                                                                            \
            throw LOGICAL_ERROR_EXCEPTION("%s has not the wanted interface", #pointer);                      \
    } while (false)
