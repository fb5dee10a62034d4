// SPDX-License-Identifier: Apache-2.0
#include "NodeText.h"

#include <algorithm>
#include <cstddef>

namespace Kx
{

namespace
{

template <typename Enumerator>
struct NameRow
{
    Enumerator value;
    const char* name;
};

// clang-format off
constexpr NameRow<GenApi::EAccessMode> kAccessModes[] = {
    {GenApi::NI, "NI"},
    {GenApi::NA, "NA"},
    {GenApi::WO, "WO"},
    {GenApi::RO, "RO"},
    {GenApi::RW, "RW"},
};
constexpr NameRow<GenApi::EVisibility> kVisibilities[] = {
    {GenApi::Beginner,  "Beginner"},
    {GenApi::Expert,    "Expert"},
    {GenApi::Guru,      "Guru"},
    {GenApi::Invisible, "Invisible"},
};
constexpr NameRow<GenApi::ECachingMode> kCachingModes[] = {
    {GenApi::NoCache,      "NoCache"},
    {GenApi::WriteThrough, "WriteThrough"},
    {GenApi::WriteAround,  "WriteAround"},
};
constexpr NameRow<GenApi::EInterfaceType> kInterfaces[] = {
    {GenApi::intfIValue,       "IValue"},
    {GenApi::intfIBase,        "IBase"},
    {GenApi::intfIInteger,     "IInteger"},
    {GenApi::intfIBoolean,     "IBoolean"},
    {GenApi::intfICommand,     "ICommand"},
    {GenApi::intfIFloat,       "IFloat"},
    {GenApi::intfIString,      "IString"},
    {GenApi::intfIRegister,    "IRegister"},
    {GenApi::intfICategory,    "ICategory"},
    {GenApi::intfIEnumeration, "IEnumeration"},
    {GenApi::intfIEnumEntry,   "IEnumEntry"},
    {GenApi::intfIPort,        "IPort"},
};
// clang-format on

template <typename Enumerator, size_t N>
const char* Find(const NameRow<Enumerator> (&rows)[N], Enumerator value)
{
    const auto row =
        std::find_if(std::begin(rows), std::end(rows),
                     [value](const NameRow<Enumerator>& candidate) { return candidate.value == value; });
    return row == std::end(rows) ? "?" : row->name;
}

template <typename Class>
bool IsA(const GenICam::GenericException& e)
{
    return dynamic_cast<const Class*>(&e) != nullptr;
}

bool IsAny(const GenICam::GenericException&) { return true; }

struct ExceptionRow
{
    bool (*isA)(const GenICam::GenericException&);
    const char* name;
};

// clang-format off
constexpr ExceptionRow kExceptions[] = {
    {IsA<GenICam::BadAllocException>,        "BadAllocException"},
    {IsA<GenICam::InvalidArgumentException>, "InvalidArgumentException"},
    {IsA<GenICam::OutOfRangeException>,      "OutOfRangeException"},
    {IsA<GenICam::PropertyException>,        "PropertyException"},
    {IsA<GenICam::RuntimeException>,         "RuntimeException"},
    {IsA<GenICam::LogicalErrorException>,    "LogicalErrorException"},
    {IsA<GenICam::AccessException>,          "AccessException"},
    {IsA<GenICam::TimeoutException>,         "TimeoutException"},
    {IsA<GenICam::DynamicCastException>,     "DynamicCastException"},
    {IsAny,                                  "GenericException"},
};
// clang-format on

const char* ClassOf(const GenICam::GenericException& e)
{
    return std::find_if(std::begin(kExceptions), std::end(kExceptions),
                        [&e](const ExceptionRow& row) { return row.isA(e); })
        ->name; // the last row fits all
}

} // namespace

ValueText ReadValue(GenApi::INode& node)
{
    const GenApi::EInterfaceType type = node.GetPrincipalInterfaceType();
    const auto value = dynamic_cast<GenApi::IValue*>(&node);
    if (value == nullptr || type == GenApi::intfICategory || type == GenApi::intfICommand)
        return {};
    try {
        if (!GenApi::IsReadable(node.GetAccessMode()))
            return {ValueText::Kind::NotReadable, {}};
        return {ValueText::Kind::Value, value->ToString().c_str()};
    } catch (const GenICam::GenericException& e) {
        return {ValueText::Kind::Raised, std::string(ClassOf(e)) + ": " + e.GetDescription()};
    }
}

std::string UnitOf(GenApi::INode& node)
{
    if (const auto integer = dynamic_cast<GenApi::IInteger*>(&node))
        return integer->GetUnit().c_str();
    if (const auto real = dynamic_cast<GenApi::IFloat*>(&node))
        return real->GetUnit().c_str();
    return {};
}

const char* NameOf(GenApi::EAccessMode mode) { return Find(kAccessModes, mode); }
const char* NameOf(GenApi::EVisibility visibility) { return Find(kVisibilities, visibility); }
const char* NameOf(GenApi::ECachingMode mode) { return Find(kCachingModes, mode); }
const char* NameOf(GenApi::EInterfaceType type) { return Find(kInterfaces, type); }

std::string OneLine(std::string text)
{
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            c = ' ';
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return text;
}

} // namespace Kx
