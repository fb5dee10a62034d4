// SPDX-License-Identifier: Apache-2.0
// A window, its features and the registers behind them.
#pragma once

#include "Support.h"

#include <GenApi/IPort.h>

#include <string>

namespace KxTest
{

template <class Window>
class WindowTest : public GuiTest
{
protected:
    explicit WindowTest(KxApi::_EKxWindowType_t eType)
        : m_pWnd(KxApi::CreateIKxWnd(eType))
    {}

    template <class Pointer = GenApi::CIntegerPtr>
    Pointer Node(const std::string& strName) const
    {
        GenApi::INode* const pNode = m_pMap->GetNode(strName.c_str());
        EXPECT_NE(pNode, nullptr) << strName;
        return Pointer(pNode);
    }
    void Set(const char* szName, const std::string& strValue) const
    {
        Node<GenApi::CValuePtr>(szName)->FromString(strValue.c_str());
    }
    std::string Get(const char* szName) const { return Node<GenApi::CValuePtr>(szName)->ToString().c_str(); }
    bool IsAvailable(const char* szName) const { return GenApi::IsAvailable(m_pMap->GetNode(szName)); }

    uint32_t Read32(int64_t nAddress) const
    {
        uint32_t nValue = 0;
        m_pPort->Read(&nValue, nAddress, sizeof(nValue));
        return nValue;
    }
    void Write32(int64_t nAddress, uint32_t nValue) const
    {
        m_pPort->Write(&nValue, nAddress, sizeof(nValue));
    }

    const KxApi::CIKxWndPtrT<Window> m_pWnd;
    GenApi::INodeMap* const m_pMap = m_pWnd->GetINodeMap();
    GenApi::IPort* const m_pPort = dynamic_cast<GenApi::IPort*>(m_pWnd.Get());
};

} // namespace KxTest
