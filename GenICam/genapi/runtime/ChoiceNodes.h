// SPDX-License-Identifier: Apache-2.0
// Features with few values: Boolean, Command, Enumeration and its entries.
#pragma once

#include "runtime/ValueSlots.h"

#include <GenApi/IBoolean.h>
#include <GenApi/ICommand.h>
#include <GenApi/IEnumeration.h>

#include <limits>

namespace KxGenApi
{

class BooleanNode final : public Node, public IBoolean
{
public:
    BooleanNode(NodeMap& map, NodeIndex index);

    // IBoolean
    EInterfaceType GetPrincipalInterfaceType() const override { return intfIBoolean; }
    INode* GetNode() override { return this; }
    gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override { return IsValueKnown(); }
    void SetValue(bool Value, bool Verify = true) override;
    IBoolean& operator=(bool Value) override;
    bool GetValue(bool Verify = false, bool IgnoreCache = false) const override;
    bool operator()() const override { return GetValue(); }
    bool operator*() const override { return GetValue(); }

    // for other nodes
    int64_t ReadInteger(ReadOptions options) override { return Read(options) ? 1 : 0; }
    bool ReadFlag() override;
    void WriteInteger(int64_t value, bool verify, Change& change) override;
    void WriteReal(double value, bool verify, Change& change) override;
    int64_t IntegerMin() override { return std::numeric_limits<int64_t>::min(); } // all but 0 is true
    int64_t IntegerMax() override { return std::numeric_limits<int64_t>::max(); }
    int64_t IntegerInc() override { return 1; }

protected:
    EAccessMode OwnAccessMode() const override { return m_slots.AccessMode(); }
    ECachingMode OwnCachingMode() const override { return m_slots.CachingMode(); }
    bool OwnRefusesWrites() const override { return m_slots.RefusesWrites(); }

private:
    bool Read(ReadOptions options);
    void Write(bool value, bool verify, Change& change);

    ValueSlots<int64_t> m_slots;
    int64_t m_on = 1, m_off = 0;
    bool m_value = false;
};

class CommandNode final : public Node, public ICommand
{
public:
    CommandNode(NodeMap& map, NodeIndex index);

    // ICommand
    EInterfaceType GetPrincipalInterfaceType() const override { return intfICommand; }
    INode* GetNode() override { return this; }
    gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override;
    void Execute(bool Verify = true) override;
    void operator()() override { Execute(); }
    bool IsDone(bool Verify = true) override;

    // for other nodes
    int64_t ReadInteger(ReadOptions options) override;
    void WriteInteger(int64_t value, bool verify, Change& change) override;
    int64_t IntegerMin() override { return 0; }
    int64_t IntegerMax() override { return 1; }
    int64_t IntegerInc() override { return 1; }
    bool IsPollingActive() override { return m_pending; }

protected:
    EAccessMode OwnAccessMode() const override { return m_slots.AccessMode(); }
    ECachingMode OwnCachingMode() const override { return m_slots.CachingMode(); }
    bool OwnRefusesWrites() const override { return m_slots.RefusesWrites(); }

private:
    void Run(bool verify, Change& change);
    bool Ask(Change& change);

    ValueSlots<int64_t> m_slots;
    NumberLink m_commandValue;
    bool m_pending = false; // started, and not yet seen to have ended
};

class EnumEntryNode final : public Node, public IEnumEntry
{
public:
    EnumEntryNode(NodeMap& map, NodeIndex index);

    // IEnumEntry
    EInterfaceType GetPrincipalInterfaceType() const override { return intfIEnumEntry; }
    INode* GetNode() override { return this; }
    gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override { return true; }
    int64_t GetValue() override { return m_value; }
    gcstring GetSymbolic() const override { return m_symbolic; }
    double GetNumericValue() override { return m_number; }
    bool IsSelfClearing() override { return m_selfClearing; }
    gcstring GetDisplayName() const override;

    // for the enumeration and other nodes
    int64_t Value() const { return m_value; }
    const gcstring& Symbolic() const { return m_symbolic; }
    double Number() const { return m_number; }
    bool HasNumber() const { return m_hasNumber; }
    bool ClearsItself() const { return m_selfClearing; }
    int64_t ReadInteger(ReadOptions) override { return m_value; }
    int64_t IntegerMin() override { return m_value; }
    int64_t IntegerMax() override { return m_value; }
    int64_t IntegerInc() override { return 1; }

private:
    int64_t m_value = 0;
    double m_number = 0;
    gcstring m_symbolic;
    bool m_hasNumber = false;
    bool m_selfClearing = false;
};

class EnumerationNode final : public Node, public IEnumeration
{
public:
    EnumerationNode(NodeMap& map, NodeIndex index);

    // IEnumeration
    EInterfaceType GetPrincipalInterfaceType() const override { return intfIEnumeration; }
    INode* GetNode() override { return this; }
    gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override { return IsValueKnown(); }
    void GetSymbolics(StringList_t& Symbolics) override;
    void GetEntries(NodeList_t& Entries) override;
    IEnumeration& operator=(const gcstring& ValueStr) override;
    void SetIntValue(int64_t Value, bool Verify = true) override;
    gcstring operator*() override { return ToString(); }
    int64_t GetIntValue(bool Verify = false, bool IgnoreCache = false) override;
    IEnumEntry* GetEntryByName(const gcstring& Symbolic) override;
    IEnumEntry* GetEntry(const int64_t IntValue) override;
    IEnumEntry* GetCurrentEntry(bool Verify = false, bool IgnoreCache = false) override;

    // for other nodes
    int64_t ReadInteger(ReadOptions options) override;
    double ReadReal(ReadOptions options) override;
    bool ReadFlag() override { return Read(ReadOptions()) != 0; }
    int64_t EntryInteger(std::string_view symbolic) override;
    /// These choose the available entry whose number is nearest, so that any number will do.
    void WriteInteger(int64_t value, bool verify, Change& change) override;
    void WriteReal(double value, bool verify, Change& change) override;
    int64_t IntegerMin() override { return std::numeric_limits<int64_t>::min(); }
    int64_t IntegerMax() override { return std::numeric_limits<int64_t>::max(); }
    int64_t IntegerInc() override { return 1; }
    double RealMin() override { return std::numeric_limits<double>::lowest(); }
    double RealMax() override { return std::numeric_limits<double>::max(); }
    bool IsPollingActive() override { return m_clearsItself; }

protected:
    EAccessMode OwnAccessMode() const override;
    ECachingMode OwnCachingMode() const override { return m_slots.CachingMode(); }
    bool OwnRefusesWrites() const override { return m_slots.RefusesWrites(); }

private:
    const std::vector<EnumEntryNode*>& Entries() const;
    /// Of several entries with one integer it is the last one that counts.
    EnumEntryNode* EntryOf(int64_t value) const;
    EnumEntryNode* EntryNamed(std::string_view symbolic) const;
    EnumEntryNode& Current(ReadOptions options);
    /// The entry of what is read, null if there is none; verified, AccessException for one that isn't
    /// available.
    EnumEntryNode* ReadEntry(ReadOptions options);
    [[noreturn]] void RaiseUnknown() const;
    void Choose(const EnumEntryNode& entry, bool verify, Change& change);
    int64_t Read(ReadOptions options);

    ValueSlots<int64_t> m_slots;
    mutable std::vector<EnumEntryNode*> m_entries; // filled at first use
    int64_t m_value = 0;
    bool m_clearsItself = false; // the entry read last is one that the device leaves by itself
};

} // namespace KxGenApi
