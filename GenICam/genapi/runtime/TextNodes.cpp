// SPDX-License-Identifier: Apache-2.0
#include "runtime/TextNodes.h"

#include "runtime/CachedRead.h"
#include "runtime/TextConversion.h"

#include <Base/GCException.h>

#include <algorithm>
#include <limits>

namespace KxGenApi
{

// ------------------------------------------------------------------------------------------------- TextBase

gcstring TextBase::ToString(bool Verify, bool IgnoreCache)
{
    const Call call(*this, "ToString");
    return ReadText({Verify, IgnoreCache});
}

void TextBase::FromString(const gcstring& ValueStr, bool Verify)
{
    Change change(*this, "FromString");
    WriteText(ValueStr, Verify, change);
    change.Finish();
}

IString& TextBase::operator=(const gcstring& Value)
{
    SetValue(Value);
    return *this;
}

void TextBase::SetValue(const gcstring& Value, bool Verify)
{
    Change change(*this, "SetValue");
    WriteText(Value, Verify, change);
    change.Finish();
}

gcstring TextBase::GetValue(bool Verify, bool IgnoreCache)
{
    const Call call(*this, "GetValue");
    return ReadText({Verify, IgnoreCache});
}

int64_t TextBase::GetMaxLength(bool)
{
    const Call call(*this, "GetMaxLength");
    return MaxTextLength();
}

gcstring TextBase::ReadText(ReadOptions options)
{
    ReadThroughCache(options, [&] { m_value = Fetch(options); });
    return m_value;
}

void TextBase::WriteText(const gcstring& text, bool verify, Change& change)
{
    const Level level(*this);
    RequireWritable(verify);
    Store(text, verify, change);
}

// --------------------------------------------------------------------------------------------------- String

StringNode::StringNode(NodeMap& map, NodeIndex index)
    : TextBase(map, index)
    , m_literal(TextOf(Prop::Value))
{
    if (const Property* const target = Find(Prop::pValue))
        m_target = Link(*target);
}

int64_t StringNode::MaxTextLength()
{
    const Level level(*this);
    constexpr int64_t kLongest = 1073741820; // of a text that the map itself holds
    return m_target ? m_target.Target(*this).MaxTextLength() : kLongest;
}

EAccessMode StringNode::OwnAccessMode() const { return m_target ? m_target.Target(*this).AccessMode() : RW; }

ECachingMode StringNode::OwnCachingMode() const
{
    return m_target ? m_target.Target(*this).CachingMode() : WriteThrough;
}

gcstring StringNode::Fetch(ReadOptions options)
{
    return m_target ? m_target.Target(*this).ReadText(options) : m_literal;
}

void StringNode::Store(const gcstring& text, bool verify, Change& change)
{
    if (m_target) {
        m_target.Target(*this).WriteText(text, verify, change);
        return;
    }
    m_literal = text;
    change.Invalidate(Index());
}

// ------------------------------------------------------------------------------------------------ StringReg

int64_t StringRegNode::MaxTextLength()
{
    if (!IsWritable(AccessMode())) // nothing longer than what it holds will ever be in it
        return static_cast<int64_t>(ReadText(ReadOptions()).size());
    return m_register.Length();
}

gcstring StringRegNode::Fetch(ReadOptions options)
{
    const std::vector<uint8_t>& bytes = m_register.Read(options);
    const auto end = std::find(bytes.begin(), bytes.end(), uint8_t{0});
    return gcstring(reinterpret_cast<const char*>(bytes.data()), static_cast<size_t>(end - bytes.begin()));
}

void StringRegNode::Store(const gcstring& text, bool, Change& change)
{
    const int64_t length = m_register.CheckedLength();
    if (static_cast<int64_t>(text.size()) > length) {
        throw KXNODE_ERROR(OutOfRangeException)(
            "Length = %lld of the text must be equal or smaller than Max = %lld",
            static_cast<long long>(text.size()), static_cast<long long>(length));
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(length)); // NULs to the end
    std::copy_n(text.c_str(), text.size(), bytes.begin());
    m_register.Write(std::move(bytes), change);
    m_valueKnown = false;
}

// ------------------------------------------------------------------------------------------------- Register

gcstring RegisterNode::ToString(bool, bool IgnoreCache)
{
    const Call call(*this, "ToString");
    RequireReadable();
    ReadOptions options;
    options.ignoreCache = IgnoreCache;
    const std::vector<uint8_t>& bytes = m_register.Read(options);
    const std::string text = BytesToText(bytes.data(), bytes.size());
    return gcstring(text.data(), text.size());
}

void RegisterNode::FromString(const gcstring& ValueStr, bool Verify)
{
    Change change(*this, "FromString");
    std::optional<std::vector<uint8_t>> bytes =
        TextToBytes(std::string_view(ValueStr.c_str(), ValueStr.size()));
    if (!bytes)
        throw KXNODE_ERROR(InvalidArgumentException)("'%s' is no even count of hexadecimal digits",
                                                     ValueStr.c_str());
    bytes->resize(std::min(bytes->size(), static_cast<size_t>(m_register.CheckedLength())));
    WriteBytes(std::move(*bytes), Verify, change);
    change.Finish();
}

} // namespace KxGenApi
