// SPDX-License-Identifier: Apache-2.0
// The windows' features and registers: every node of the descriptions against the port.
#include "Support.h"
#include "frame/KxBaseWnd_qt.h"

#include <map>
#include <ostream>
#include <set>
#include <sstream>

namespace KxTest
{
namespace
{

using namespace KxApi;

using Names = std::set<std::string>;

struct CWindowCase
{
    const char* szName;
    _EKxWindowType_t eType;
    bool bShown; ///< as some features have to be
    const char* szCategory;
    size_t nFeatures;  ///< of the category and those below
    size_t nRegisters; ///< of the window, those of one address counted once
    Names setNotServed;
    Names setNotWritten; ///< are only told, though their nodes could be written
    /// Settings "Name=Value" that open features; each feature is open in one of these states.
    std::vector<std::string> vecStates;
};

void PrintTo(const CWindowCase& window, std::ostream* pStream) { *pStream << window.szName; }

/// An object of each type, since the features follow it, with styles that open others.
std::vector<std::string> DrawingStates()
{
    std::vector<std::string> vecStates;
    for (const char* const szType : {"Line", "Rectangle", "Ellipse", "Text", "Angle", "Polygon",
                                     "Perpendicular", "Arc", "Bezier", "FreeHand", "Cross"})
        vecStates.push_back(
            "DrawingItemType=Select DrawingObjectsCount=3 DrawingObjectSelector=1 DrawingObjectType=" +
            std::string(szType) +
            " DrawingObjectPointCount=4 HorizontalGridLineCount=1 GridLineWidth=1 DrawingLineWidth=1 "
            "DrawingDefaultLineWidth=1 DrawingBrushStyle=Hatch_Cross DrawingDefaultBrushStyle=Hatch_Cross "
            "DrawingBrushBackgroundColorMode=Opaque DrawingDefaultBrushBackgroundColorMode=Opaque "
            "DrawingFontBackgroundColorMode=Opaque DrawingDefaultFontBackgroundColorMode=Opaque");
    return vecStates;
}

const Names kLimits = {"ScrollHMaxReg",
                       "ScrollVMaxReg",
                       "RefreshIntervalMinReg",
                       "RefreshIntervalMaxReg",
                       "FixedZoomMagnificationMinReg",
                       "FixedZoomMagnificationMaxReg"};
const CWindowCase kWindows[] = {
    {"Image",
     KxWindowType_ImageDisplay,
     true,
     "ViewControl",
     18,
     95,
     {},
     kLimits,
     {"ZoomMode=FixedZoom FixedZoomMagnification=1 BackgroundStyle=Cross DrawingObjectsCount=3 "
      "DrawingObjectSelector=1 DrawingObjectType=Rectangle"}},
    {"Drawing", KxWindowType_ImageDisplay, false, "DrawingTool", 82, 95, {}, kLimits, DrawingStates()},
    {"Graph",
     KxWindowType_GraphDisplay,
     true,
     "ViewControl",
     49,
     38,
     // The file has them for the sake of its kin; nothing shows them.
     {"BackgroundStyleReg", "ForegroundColorReg"},
     kLimits,
     {"PlotSizeAuto=0 PlotWidth=2000 PlotHeight=2000 TextBackgroundColorMode=Opaque"}},
    {"NodeMap",
     KxWindowType_NodeMapDisplay,
     true,
     "ViewControl",
     20,
     21,
     {},
     {},
     {"AlphabeticMode=0 EnableFilter=1"}},
    {"Devices", KxWindowType_DeviceSelection, true, "ViewControl", 2, 3, {}, {}, {""}},
};

class Description : public GuiTest, public ::testing::WithParamInterface<CWindowCase>
{
protected:
    Description()
    {
        Enter(GetParam().vecStates.front());
        if (!GetParam().bShown)
            return;
        if (auto* const pImageWnd = dynamic_cast<IKxImageDisplayWnd*>(m_pWnd.Get()))
            pImageWnd->RegisterIKxImage(MakeImage(2000, 2000)->GetIKxImage()); // which can be scrolled
        Show(*m_pWnd);
    }

    void Enter(const std::string& strState) const
    {
        std::istringstream settings(strState);
        for (std::string strName, strValue;
             std::getline(settings >> std::ws, strName, '=') && settings >> strValue;) {
            const GenApi::CValuePtr pValue(m_pMap->GetNode(strName.c_str()));
            if (GenApi::IsWritable(pValue))
                pValue->FromString(strValue.c_str());
        }
        Pump();
    }

    std::vector<GenApi::INode*> Features(const char* szCategory) const
    {
        std::vector<GenApi::INode*> vecFeatures;
        GenApi::FeatureList_t listFeatures;
        GenApi::CCategoryPtr(m_pMap->GetNode(szCategory))->GetFeatures(listFeatures);
        for (GenApi::IValue* const pFeature : listFeatures) {
            GenApi::INode* const pNode = pFeature->GetNode();
            if (pNode->GetPrincipalInterfaceType() != GenApi::intfICategory) {
                vecFeatures.push_back(pNode);
                continue;
            }
            const auto vecInner = Features(pNode->GetName().c_str());
            vecFeatures.insert(vecFeatures.end(), vecInner.begin(), vecInner.end());
        }
        return vecFeatures;
    }

    const CIKxWndPtrT<IKxWndReleasable> m_pWnd{CreateIKxWnd(GetParam().eType)};
    CKxBaseWndCore& m_port = dynamic_cast<CKxBaseWndCore&>(*m_pWnd);
    GenApi::INodeMap* const m_pMap = m_pWnd->GetINodeMap();
};

TEST_P(Description, HasAServedRegisterForEachNodeAndViceVersa)
{
    std::map<int64_t, std::string> mapRegisters;
    GenApi::NodeList_t listNodes;
    m_pMap->GetNodes(listNodes);
    for (GenApi::INode* const pNode : listNodes) {
        auto* const pRegister = dynamic_cast<GenApi::IRegister*>(pNode);
        if (!pRegister)
            continue;
        const std::string strName = pNode->GetName().c_str();
        SCOPED_TRACE(strName);
        const int64_t nAddress = pRegister->GetAddress();
        mapRegisters.emplace(nAddress, strName);
        std::vector<unsigned char> buffer(static_cast<size_t>(pRegister->GetLength()));
        int64_t nLength = pRegister->GetLength();
        const bool bServed = GetParam().setNotServed.count(strName) == 0;
        const std::string strError = ErrorOf([&] {
            if (GenApi::IsReadable(pNode)) {
                EXPECT_EQ(m_port.mRead(buffer.data(), nAddress, &nLength), bServed);
            }
            if (GenApi::IsWritable(pNode) && GetParam().setNotWritten.count(strName) == 0) {
                EXPECT_EQ(m_port.mWrite(buffer.data(), nAddress, &nLength), bServed);
            }
            EXPECT_EQ(nLength, pRegister->GetLength());
        });
        // A command may have nothing to do in this state.
        EXPECT_EQ(GenApi::IsReadable(pNode) ? strError : "", "");
        // Texts and arrays may be read in parts.
        if (bServed && GenApi::IsReadable(pNode) && nAddress < 0x3000 &&
            !dynamic_cast<GenApi::IString*>(pNode)) {
            --nLength;
            EXPECT_THROW(m_port.mRead(buffer.data(), nAddress, &nLength), GenICam::OutOfRangeException);
        }
        Enter(GetParam().vecStates.front()); // commands take objects away
    }
    EXPECT_EQ(mapRegisters.size(), GetParam().nRegisters);
    // The first word tells what no description needs: the size of addresses.
    for (int64_t nAddress = 4, nEnd = 0; nAddress < 0x3000; nAddress += 4) {
        const auto found = mapRegisters.find(nAddress);
        if (found != mapRegisters.end())
            nEnd = nAddress +
                   dynamic_cast<GenApi::IRegister*>(m_pMap->GetNode(found->second.c_str()))->GetLength();
        unsigned char buffer[8];
        int64_t nLength = 8;
        // The drawing tool has registers that nodes don't begin at.
        const bool bDrawing =
            GetParam().eType == KxWindowType_ImageDisplay && nAddress >= 0x1000 && nAddress < 0x2000;
        if (nAddress >= nEnd && !bDrawing) {
            EXPECT_FALSE(m_port.mRead(buffer, nAddress, &nLength)) << "no node at " << nAddress;
        }
    }
}

/// Values of a feature that are worth writing: all entries, both truths, the ends of the range.
std::vector<std::string> ValuesOf(GenApi::INode* pNode)
{
    std::vector<std::string> vecValues;
    if (const GenApi::CEnumerationPtr pEnumeration(pNode); pEnumeration.IsValid()) {
        GenApi::StringList_t listSymbolics;
        pEnumeration->GetSymbolics(listSymbolics);
        vecValues.assign(listSymbolics.begin(), listSymbolics.end());
    } else if (GenApi::CBooleanPtr(pNode).IsValid()) {
        vecValues = {"1", "0", "1"};
    } else if (const GenApi::CIntegerPtr pInteger(pNode); pInteger.IsValid()) {
        vecValues = {std::to_string(pInteger->GetMin()), std::to_string(pInteger->GetMax())};
    } else if (GenApi::CFloatPtr(pNode).IsValid()) {
        vecValues = {"2", "0.25"};
    } else if (GenApi::CStringPtr(pNode).IsValid()) {
        vecValues = {"100 %", "\xC2\xB5m", ""};
    }
    return vecValues;
}

TEST_P(Description, ReadsBackWhatIsWrittenToEachFeature)
{
    const auto vecFeatures = Features(GetParam().szCategory);
    EXPECT_EQ(vecFeatures.size(), GetParam().nFeatures);
    Names setTried;
    for (const std::string& strState : GetParam().vecStates) {
        for (GenApi::INode* const pNode : vecFeatures) {
            const std::string strName = pNode->GetName().c_str();
            Enter(strState);
            if (!GenApi::IsWritable(pNode))
                continue;
            setTried.insert(strName);
            const GenApi::CValuePtr pValue(pNode);
            for (const std::string& strText : ValuesOf(pNode)) {
                SCOPED_TRACE(strName + " = " + strText + " in " + strState);
                if (!GenApi::IsWritable(pNode))
                    continue; // its own value has closed it
                pValue->FromString(strText.c_str());
                Pump(); // scroll bars move in the GUI thread
                m_pMap->InvalidateNodes();
                EXPECT_EQ(pValue->ToString().c_str(), strText);
            }
            if (const GenApi::CCommandPtr pCommand(pNode); pCommand.IsValid())
                pCommand->Execute();
        }
    }
    for (GenApi::INode* const pNode : vecFeatures) {
        EXPECT_TRUE(setTried.count(pNode->GetName().c_str())) << pNode->GetName().c_str();
        EXPECT_FALSE(pNode->GetToolTip().empty()) << pNode->GetName().c_str();
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, Description, ::testing::ValuesIn(kWindows),
                         [](const auto& window) { return std::string(window.param.szName); });

} // namespace
} // namespace KxTest
