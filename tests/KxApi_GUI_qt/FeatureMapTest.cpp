// SPDX-License-Identifier: Apache-2.0
// The image window's features and registers: every node of the description against the port.
#include "Support.h"
#include "image/KxDisplayImageWnd_qt.h"

#include <gmock/gmock.h>

#include <cstring>
#include <set>

namespace KxTest
{
namespace
{

using namespace KxApi;
using ::testing::HasSubstr;

class FeatureMap : public GuiTest
{
protected:
    FeatureMap()
        : m_pWnd(MakeImageWnd())
        , m_pPort(dynamic_cast<CKxDisplayImageWnd*>(&*m_pWnd))
        , m_pMap(m_pWnd->GetINodeMap())
    {}

    template <class Pointer = GenApi::CIntegerPtr>
    Pointer Node(const char* szName) const
    {
        GenApi::INode* const pNode = m_pMap->GetNode(szName);
        EXPECT_NE(pNode, nullptr) << szName;
        return Pointer(pNode);
    }

    uint32_t Read32(int64_t nAddress) const
    {
        uint32_t nValue = 0;
        m_pPort->Read(&nValue, nAddress, sizeof(nValue));
        return nValue;
    }
    void Write32(int64_t nAddress, uint32_t nValue) { m_pPort->Write(&nValue, nAddress, sizeof(nValue)); }

    std::vector<GenApi::INode*> Nodes() const
    {
        GenApi::NodeList_t listNodes;
        m_pMap->GetNodes(listNodes);
        return {listNodes.begin(), listNodes.end()};
    }

    /// The features below a category.
    std::vector<GenApi::INode*> Features(const char* szCategory) const
    {
        std::vector<GenApi::INode*> vecFeatures;
        GenApi::FeatureList_t listFeatures;
        Node<GenApi::CCategoryPtr>(szCategory)->GetFeatures(listFeatures);
        for (GenApi::IValue* const pFeature : listFeatures) {
            GenApi::INode* const pNode = pFeature->GetNode();
            if (pNode->GetPrincipalInterfaceType() == GenApi::intfICategory) {
                const auto vecInner = Features(pNode->GetName().c_str());
                vecFeatures.insert(vecFeatures.end(), vecInner.begin(), vecInner.end());
            } else {
                vecFeatures.push_back(pNode);
            }
        }
        return vecFeatures;
    }

    /// Makes features available that depend on others, and a range of scroll positions there.
    void ShowLargeImage()
    {
        m_pWnd->RegisterIKxImage(MakeImage(2000, 2000)->GetIKxImage());
        Show(*m_pWnd);
        ASSERT_TRUE(
            PumpUntil([this] { return m_pWnd->GetScrollHMax() > 100 && m_pWnd->GetScrollVMax() > 100; }));
    }

    const ImageWndPtr m_pWnd;
    CKxDisplayImageWnd* const m_pPort;
    GenApi::INodeMap* const m_pMap;
};

// Settings that are only told, though their nodes could be written.
const std::set<std::string> kNotServedForWriting = {
    "ScrollHMaxReg",
    "ScrollVMaxReg",
    "RefreshIntervalMinReg",
    "RefreshIntervalMaxReg",
    "FixedZoomMagnificationMinReg",
    "FixedZoomMagnificationMaxReg",
};

/// Those are in DrawingFeatureTest.cpp.
bool IsOfDrawingTool(int64_t nAddress)
{
    return (nAddress >= 0x1000 && nAddress < 0x2000) || nAddress > 0x3000;
}

TEST_F(FeatureMap, HasAServedRegisterForEachNodeAndViceVersa)
{
    size_t nRegisters = 0;
    std::set<int64_t> setAddresses;
    for (GenApi::INode* const pNode : Nodes()) {
        auto* const pRegister = dynamic_cast<GenApi::IRegister*>(pNode);
        // An address that follows a selector can't be told while there is nothing to select.
        if (!pRegister || !GenApi::IsAvailable(pNode) || IsOfDrawingTool(pRegister->GetAddress()))
            continue;
        SCOPED_TRACE(pNode->GetName().c_str());
        ++nRegisters;
        EXPECT_TRUE(setAddresses.insert(pRegister->GetAddress()).second) << "address used twice";
        unsigned char buffer[8];
        int64_t nLength = pRegister->GetLength();
        ASSERT_LE(nLength, 8);
        EXPECT_TRUE(m_pPort->mRead(buffer, pRegister->GetAddress(), &nLength));
        EXPECT_EQ(nLength, pRegister->GetLength());
        const GenApi::EAccessMode eAccess = pNode->GetAccessMode();
        EXPECT_TRUE(GenApi::IsReadable(eAccess));
        if (GenApi::IsWritable(eAccess)) {
            const bool bServed = kNotServedForWriting.count(pNode->GetName().c_str()) == 0;
            EXPECT_EQ(m_pPort->mWrite(buffer, pRegister->GetAddress(), &nLength), bServed);
        }
        --nLength;
        EXPECT_THROW(m_pPort->mRead(buffer, pRegister->GetAddress(), &nLength), GenICam::OutOfRangeException);
    }
    EXPECT_EQ(nRegisters, 26U);
    for (int64_t nAddress = 0; nAddress < 0x3000; ++nAddress) {
        unsigned char buffer[8];
        int64_t nLength = 8;
        if (setAddresses.count(nAddress) == 0 && nAddress % 4 == 0 && !IsOfDrawingTool(nAddress)) {
            EXPECT_FALSE(m_pPort->mRead(buffer, nAddress, &nLength)) << "no node at " << nAddress;
        }
    }
}

TEST_F(FeatureMap, ReadsEachFeature)
{
    ShowLargeImage();
    const auto vecFeatures = Features("ViewControl");
    EXPECT_EQ(vecFeatures.size(), 18U);
    for (GenApi::INode* const pNode : vecFeatures) {
        EXPECT_EQ(pNode->GetAccessMode(), GenApi::RW) << pNode->GetName().c_str();
        EXPECT_EQ(ErrorOf([&] { GenApi::CValuePtr(pNode)->ToString(true); }), "") << pNode->GetName().c_str();
        EXPECT_FALSE(pNode->GetToolTip().empty());
    }
}

/// Values of a feature that are worth writing: all entries, both truths, the ends of the range.
std::vector<std::string> ValuesOf(GenApi::INode* pNode)
{
    std::vector<std::string> vecValues;
    if (const GenApi::CEnumerationPtr pEnumeration(pNode); pEnumeration.IsValid()) {
        GenApi::StringList_t listSymbolics;
        pEnumeration->GetSymbolics(listSymbolics);
        for (const GenICam::gcstring& strSymbolic : listSymbolics)
            vecValues.emplace_back(strSymbolic.c_str());
    } else if (GenApi::CBooleanPtr(pNode).IsValid()) {
        vecValues = {"true", "false", "true"};
    } else if (const GenApi::CIntegerPtr pInteger(pNode); pInteger.IsValid()) {
        vecValues = {std::to_string(pInteger->GetMax()), std::to_string(pInteger->GetMin()),
                     std::to_string((pInteger->GetMin() + pInteger->GetMax()) / 2)};
    } else if (const GenApi::CFloatPtr pFloat(pNode); pFloat.IsValid()) {
        vecValues = {std::to_string(pFloat->GetMax()), std::to_string(pFloat->GetMin()), "2.5"};
    }
    return vecValues;
}

TEST_F(FeatureMap, ReadsBackWhatIsWrittenToEachFeature)
{
    ShowLargeImage();
    for (GenApi::INode* const pNode : Features("ViewControl")) {
        const std::string strName = pNode->GetName().c_str();
        const GenApi::CValuePtr pValue(pNode);
        for (const std::string& strText : ValuesOf(pNode)) {
            SCOPED_TRACE(strName + " = " + strText);
            pValue->FromString(strText.c_str());
            Pump(); // scroll bars move in the GUI thread
            m_pMap->InvalidateNodes();
            const std::string strRead = pValue->ToString().c_str();
            if (GenApi::CFloatPtr(pNode).IsValid())
                EXPECT_DOUBLE_EQ(std::stod(strRead), std::stod(strText));
            else if (GenApi::CBooleanPtr(pNode).IsValid())
                EXPECT_EQ(strRead == "1" || strRead == "true", strText == "true");
            else
                EXPECT_EQ(strRead, strText);
        }
        // What the next ones depend on.
        m_pWnd->SetZoomMode(KxZoomMode_FixedZoom);
        m_pWnd->SetManualZoomMagnification(1.0);
        m_pWnd->SetBackgroundStyle(KxBackgroundStyle_Cross);
        Pump();
    }
}

TEST_F(FeatureMap, FollowsChangesOfTheApplicationWithoutAsking)
{
    const auto pInterval = Node("RefreshInterval");
    EXPECT_EQ(pInterval->GetValue(), 33);
    m_pWnd->SetRefreshInterval(100);
    EXPECT_EQ(pInterval->GetValue(), 100);
    const auto pInversion = Node<GenApi::CBooleanPtr>("ColorMapInversion");
    EXPECT_FALSE(pInversion->GetValue());
    m_pWnd->SetColorMapInversion(true);
    EXPECT_FALSE(pInversion->GetValue()) << "this one keeps its cached value";
    EXPECT_TRUE(pInversion->GetValue(false, true));
}

TEST_F(FeatureMap, OffersLimitsThatCannotBeMoved)
{
    EXPECT_EQ(Read32(0x2028), 1000U);
    Write32(0x2028, 5);
    EXPECT_EQ(Read32(0x2028), 1000U);
    const auto pMagnification = Node<GenApi::CFloatPtr>("FixedZoomMagnification");
    EXPECT_DOUBLE_EQ(pMagnification->GetMin(), 0.01);
    EXPECT_DOUBLE_EQ(pMagnification->GetMax(), 64.0);
}

TEST_F(FeatureMap, HidesWhatHasNoMeaning)
{
    const auto available = [this](const char* szName) {
        return GenApi::IsAvailable(m_pMap->GetNode(szName));
    };
    m_pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
    EXPECT_FALSE(available("ScrollHPosition"));
    EXPECT_FALSE(available("FixedZoomMagnification"));
    m_pWnd->SetBackgroundStyle(KxBackgroundStyle_None);
    EXPECT_FALSE(available("ForegroundColor"));
    EXPECT_FALSE(available("ForegroundColorSelector"));
    EXPECT_TRUE(available("BackgroundColor"));
}

TEST_F(FeatureMap, PacksColoursByTheirSelectors)
{
    Node<GenApi::CEnumerationPtr>("ForegroundColorSelector")->FromString("Green");
    Node("ForegroundColor")->SetValue(0x12);
    EXPECT_EQ(m_pWnd->GetForegroundColor(), 0x00C012C0U);
    Node<GenApi::CEnumerationPtr>("BackgroundColorSelector")->FromString("Blue");
    Node("BackgroundColor")->SetValue(0);
    EXPECT_EQ(m_pWnd->GetBackgroundColor(), 0x0000FFFFU);
    m_pWnd->SetBackgroundColor(0x00350000);
    EXPECT_EQ(Node("BackgroundColor")->GetValue(), 0x35);
}

TEST_F(FeatureMap, ShowsNoEntryForAStretchModeThatOnlyTheRegisterTakes)
{
    Write32(0x2034, 2);
    EXPECT_EQ(m_pWnd->GetStretchMode(), 2);
    m_pMap->InvalidateNodes();
    EXPECT_NE(ErrorOf([this] { Node<GenApi::CEnumerationPtr>("StretchMode")->ToString(); }), "");
    EXPECT_THAT(ErrorOf([this] { Write32(0x2034, 4); }),
                HasSubstr("eStretchMode = 4 must be smaller than Max = 4"));
}

TEST_F(FeatureMap, SplitsAccessesToThePortAtItsRegisters)
{
    uint32_t arrValues[2] = {};
    m_pPort->Read(arrValues, 0x2024, sizeof(arrValues));
    EXPECT_EQ(arrValues[0], 0U);
    EXPECT_EQ(arrValues[1], 1000U);
    unsigned char untouched[8];
    std::memset(untouched, 0xAA, sizeof(untouched));
    m_pPort->Read(untouched, 0x0014, sizeof(untouched));
    for (const unsigned char c : untouched)
        EXPECT_EQ(c, 0xAA);
    // From within nothing to the next word and its register.
    unsigned char bytes[0x13];
    std::memset(bytes, 0xAA, sizeof(bytes));
    m_pPort->Read(bytes, 0x0001, sizeof(bytes));
    EXPECT_EQ(bytes[0xE], 0xAA);
    EXPECT_EQ(bytes[0xF], 1) << "the visible menu at 0x0010";
    unsigned char nSize = 0;
    m_pPort->Read(&nSize, 0, 1);
    EXPECT_EQ(nSize, sizeof(size_t));
    EXPECT_EQ(ErrorOf([&] { m_pPort->Read(bytes, 0x0010, 2); }),
              "Length = 2 must be equal or greater than Min = 4");
    EXPECT_EQ(ErrorOf([&] { m_pPort->Write(&nSize, 0, 1); }), "Node is not writable.");
    m_pPort->Read(bytes, 0x2000, 0);
    m_pPort->Write(bytes, 0x2000, -4);
    EXPECT_EQ(Read32(0x0030), 0xFFFFFFFFU);
}

} // namespace
} // namespace KxTest
