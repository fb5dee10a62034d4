// SPDX-License-Identifier: Apache-2.0
#include "ByteOrder.h"

#include <GenApi/INodeMap.h>
#include <GenApi/IPort.h>
#include <GenApi/IString.h>
#include <GenApi/SelectorSet.h>
#include <GenApi/Synch.h>
#include <GenApi/ValueArrayAdapter.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace GenApi
{
namespace
{
using GenICam::gcstring;

constexpr size_t kMaxBytes = 16u << 20;

gcstring TextOf(INode& node, const char* name)
{
    gcstring value, attribute;
    node.GetProperty(name, value, attribute);
    return value;
}

/// The one register in which a feature's value lies; null if there is none, or more.
INode* TerminalOf(INode& node)
{
    if (dynamic_cast<IRegister*>(&node))
        return &node;
    NodeList_t terminals;
    node.GetChildren(terminals, ctTerminalNodes);
    return terminals.size() == 1 && dynamic_cast<IRegister*>(terminals[0]) ? terminals[0] : nullptr;
}
} // namespace

CValueArrayAdapterBase::CValueArrayAdapterBase(IValue* pValue, IInteger* pSelector)
    : m_pRegister(nullptr)
    , m_address(0)
    , m_stride(0)
    , m_onValue(1)
    , m_count(0)
    , m_length(0)
    , m_isBigEndian(false)
    , m_isSigned(false)
    , m_isReal(false)
{
    INode* const node = pValue ? pValue->GetNode() : nullptr;
    INode* const terminal = node && pSelector ? TerminalOf(*node) : nullptr;
    if (!terminal)
        return;
    const gcstring kind = TextOf(*terminal, "NodeType");
    if ((kind != "IntReg" && kind != "FloatReg") ||
        TextOf(*node, "NodeType").find("Converter") != gcstring::npos)
        return; // bits of a register, or what a formula makes of it, are no array of numbers
    const AutoLock lock(node->GetNodeMap()->GetLock());
    CSelectorSet selectors(node);
    FeatureList_t list;
    selectors.GetSelectorList(list);
    if (list.size() != 1 || list[0] != static_cast<IValue*>(pSelector))
        return;
    IRegister& its = dynamic_cast<IRegister&>(*terminal);
    const int64_t length = its.GetLength();
    bool fits = length == 4 || length == 8 || (kind == "IntReg" && length > 0 && length < 8);
    size_t count = 0;
    for (bool set = fits && selectors.SetFirst(); set && fits; set = selectors.SetNext()) {
        const int64_t address = its.GetAddress();
        if (count == 0)
            m_address = address;
        else if (count == 1)
            m_stride = address - m_address;
        fits = its.GetLength() == length && address == m_address + m_stride * static_cast<int64_t>(count) &&
               ++count * static_cast<size_t>(length) <= kMaxBytes;
    }
    selectors.Restore();
    if (!fits || count == 0 || (count > 1 && m_stride != length))
        return;
    m_count = count;
    m_length = static_cast<size_t>(length);
    m_isBigEndian = TextOf(*terminal, "Endianess") == "BigEndian";
    m_isSigned = TextOf(*terminal, "Sign") == "Signed";
    m_isReal = kind == "FloatReg";
    const gcstring on = TextOf(*node, "OnValue");
    m_onValue = on.empty() ? 1 : std::strtoll(on.c_str(), nullptr, 0);
    m_pRegister = &its;
}

std::vector<uint8_t> CValueArrayAdapterBase::ReadBytes() const
{
    if (!m_pRegister)
        throw RUNTIME_EXCEPTION("The values of this feature are no array that can be read in one access");
    INode& node = *m_pRegister->GetNode();
    const gcstring portName = TextOf(node, "pPort");
    const auto port = dynamic_cast<IPort*>(node.GetNodeMap()->GetNode(portName));
    if (!port)
        throw RUNTIME_EXCEPTION("Register '%s' has no port", node.GetName().c_str());
    std::vector<uint8_t> bytes(m_count * m_length);
    port->Read(bytes.data(), m_address, static_cast<int64_t>(bytes.size()));
    return bytes;
}

int64_t CValueArrayAdapterBase::IntegerAt(const std::vector<uint8_t>& bytes, size_t index) const
{
    uint64_t value = 0;
    const uint8_t* const first = bytes.data() + index * m_length;
    for (size_t i = 0; i < m_length; ++i)
        value = value << 8 | first[m_isBigEndian ? i : m_length - 1 - i];
    const size_t bits = 8 * m_length;
    if (m_isSigned && bits > 0 && bits < 64 && (value >> (bits - 1) & 1) != 0)
        value |= ~uint64_t{0} << bits;
    return static_cast<int64_t>(value);
}

double CValueArrayAdapterBase::RealAt(const std::vector<uint8_t>& bytes, size_t index) const
{
    const auto word = static_cast<uint64_t>(IntegerAt(bytes, index));
    if (m_length == 4) {
        const auto narrow = static_cast<uint32_t>(word);
        float value = 0;
        std::memcpy(&value, &narrow, sizeof value);
        return static_cast<double>(value);
    }
    double value = 0;
    std::memcpy(&value, &word, sizeof value);
    return value;
}

bool CValueArrayAdapterBase::IsAdvertised(INode* pNode, IInteger* pSelector)
{
    if (!pNode || !pSelector)
        return false;
    const auto text = dynamic_cast<IString*>(pNode->GetNodeMap()->GetNode("ValueArrayCandidates"));
    if (!text)
        return false;
    std::string candidates = text->GetValue().c_str();
    candidates = "," + candidates.substr(0, candidates.find('#')) + ",";
    candidates.erase(std::remove(candidates.begin(), candidates.end(), ' '), candidates.end());
    const gcstring wanted = "," + pNode->GetName() + "[" + pSelector->GetNode()->GetName() + "],";
    return candidates.find(wanted.c_str()) != std::string::npos;
}

} // namespace GenApi
