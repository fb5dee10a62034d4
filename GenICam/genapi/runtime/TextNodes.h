// SPDX-License-Identifier: Apache-2.0
// Text features, text registers and registers of plain bytes.
#pragma once

#include "runtime/NumberLink.h"
#include "runtime/RegisterNodes.h"

#include <GenApi/IString.h>

namespace KxGenApi
{

/// A node with a text.
class TextBase : public Node, public IString
{
public:
    using Node::Node;

    // IString
    EInterfaceType GetPrincipalInterfaceType() const override { return intfIString; }
    INode* GetNode() override { return this; }
    gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override { return IsValueKnown(); }
    IString& operator=(const gcstring& Value) override;
    void SetValue(const gcstring& Value, bool Verify = true) override;
    gcstring GetValue(bool Verify = false, bool IgnoreCache = false) override;
    gcstring operator()() override { return GetValue(); }
    gcstring operator*() override { return GetValue(); }
    int64_t GetMaxLength(bool Verify = false) override;

    // for other nodes
    gcstring ReadText(ReadOptions options) override;
    void WriteText(const gcstring& text, bool verify, Change& change) override;

protected:
    virtual gcstring Fetch(ReadOptions options) = 0;
    virtual void Store(const gcstring& text, bool verify, Change& change) = 0;

private:
    gcstring m_value;
};

/// String: a text of its own or that of another node.
class StringNode final : public TextBase
{
public:
    StringNode(NodeMap& map, NodeIndex index);
    using TextBase::operator=;

    int64_t MaxTextLength() override;

protected:
    EAccessMode OwnAccessMode() const override;
    ECachingMode OwnCachingMode() const override;
    bool OwnRefusesWrites() const override { return m_target && m_target.Target(*this).RefusesWrites(); }
    gcstring Fetch(ReadOptions options) override;
    void Store(const gcstring& text, bool verify, Change& change) override;

private:
    Link m_target;
    gcstring m_literal;
};

class StringRegNode final : public RegisterFace<TextBase>
{
public:
    using RegisterFace::operator=;

    StringRegNode(NodeMap& map, NodeIndex index)
        : RegisterFace(map, index, WriteThrough)
    {}

    int64_t MaxTextLength() override;

protected:
    gcstring Fetch(ReadOptions options) override;
    void Store(const gcstring& text, bool verify, Change& change) override;
};

/// Node: has all that nodes have, and nothing else.
class PlainNode final : public Node, public IValue
{
public:
    using Node::Node;

    EInterfaceType GetPrincipalInterfaceType() const override { return intfIValue; }
    INode* GetNode() override { return this; }
    gcstring ToString(bool = false, bool = false) override { return {}; }
    void FromString(const gcstring&, bool = true) override {}
    bool IsValueCacheValid() const override { return false; }

protected:
    EAccessMode OwnAccessMode() const override { return RW; }
};

/// A node whose value are bytes.
class BytesBase : public Node, public virtual IValue
{
public:
    using Node::Node;

    EInterfaceType GetPrincipalInterfaceType() const override { return intfIRegister; }
    INode* GetNode() override { return this; }
    bool IsValueCacheValid() const override { return false; }
};

class RegisterNode final : public RegisterFace<BytesBase>
{
public:
    RegisterNode(NodeMap& map, NodeIndex index)
        : RegisterFace(map, index, WriteThrough)
    {}

    gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const gcstring& ValueStr, bool Verify = true) override;
};

} // namespace KxGenApi
