// SPDX-License-Identifier: Apache-2.0
#include "nodemap/SampleCode_qt.h"

#include "nodemap/CustomPropertyGridProperty_Base_qt.h"
#include "nodemap/NodePage_qt.h"

#include <GenApi/SelectorSet.h>

namespace KxApi
{
namespace
{

/// "%1" is the name. A line or two don't compile as they stand, and are to stay so: users know these texts.
struct CBlock
{
    ESampleCode eKind;
    const char* szBegin;
    const char* szLines;
    const char* szLinesIfWritable;
};

constexpr char kPre[] = "<pre style=\"white-space:pre-wrap;\">";
constexpr char kPreWithBlank[] = "<pre style=\"white-space: pre-wrap;\">";

#define KX_INTEGER_LINES(DeclarationEnd, UnitType)                                                           \
    "//SmartPointer for IInteger interface pointer\n"                                                        \
    "GenApi::CIntegerPtr pIInteger(pINode);" DeclarationEnd "//Get minimum value allowed\n"                  \
    "int64_t nMin = pIInteger->GetMin();\n\n"                                                                \
    "//Get maximum value allowed\n"                                                                          \
    "int64_t nMax = pIInteger->GetMax();\n\n"                                                                \
    "//Get increment mode\n"                                                                                 \
    "GenApi::EIncMode eIncMode = pIInteger->GetIncMode();\n\n"                                               \
    "//Get increment\n"                                                                                      \
    "int64_t nInc = pIInteger->GetInc();\n\n"                                                                \
    "//Get recommended representation\n"                                                                     \
    "GenApi::ERepresentation eRepresentation = pIInteger->GetIncMode();\n\n"                                 \
    "//Get the physical unit name\n" UnitType " strUnit = pIInteger->GetUnit();\n\n"                         \
    "//Get node value\n"                                                                                     \
    "int64_t nValue = pIInteger->GetValue();\n\n"
#define KX_INTEGER_LINES_IF_WRITABLE "//Set node value\npIInteger->SetValue(nValue);\n\n"

constexpr CBlock kBlocks[] = {
    {ESampleCode::Boolean, kPre,
     "//SmartPointer for IBoolean interface pointer\n"
     "GenApi::CBooleanPtr pIBoolean(pINode);\n\n"
     "//Get node value\n"
     "bool fValue = pIBoolean->GetValue();\n\n"
     "//Set node value\n"
     "pIBoolean->SetValue(fValue);\n\n",
     ""},
    {ESampleCode::Category, kPre,
     "//SmartPointer for ICategory interface pointer\n"
     "GenApi::CCategoryPtr pICategory(pINode);\n\n"
     "//Get all features of the category (including sub-categories)\n"
     "FeatureList_t Features;\n"
     "pICategory->GetFeatures(Features);\n\n"
     "for (GenApi::FeatureList_t::iterator itr = Features.begin(); itr != Features.end(); ++itr)\n"
     "{\n\n"
     "}\n\n",
     ""},
    {ESampleCode::Command, kPre,
     "//SmartPointer for ICommand interface pointer\n"
     "GenApi::CCommandPtr pICommand(pINode);\n"
     "//Execute the command\n"
     "pICommand->Execute();\n\n",
     ""},
    {ESampleCode::String, kPre,
     "//SmartPointer for IString interface pointer\n"
     "GenApi::CStringPtr pIString(pINode);\n\n"
     "//Get node value\n"
     "GenICam::gcstring strValue = pIString->GetValue();\n",
     "\n//Set node value\n"
     "pIString->SetValue(strValue);\n\n"},
    {ESampleCode::Register, kPre,
     "//SmartPointer for IRegister interface pointer\n"
     "GenApi::CRegisterPtr pIRegister(pINode);\n"
     "//Retrieves the Length of the register [Bytes]\n"
     "int64_t iLength = pIRegister->GetLength();\n\n"
     "//Retrieves the Address of the register\n"
     "int64_t iAddress = pIRegister->GetAddress();\n\n"
     "//Fills a buffer with the register's contents\n"
     "uint8_t *pBuffer = new uint8_t[iLength];\n"
     "pIRegister->Get(pBuffer, iLength);\n\n",
     "//Set the register's contents\n"
     "pIRegister->Set(pBuffer, iLength);\n\n"},
    {ESampleCode::Integer, kPre, KX_INTEGER_LINES("\n\n", "GenICam::gcstring"), KX_INTEGER_LINES_IF_WRITABLE},
    {ESampleCode::IPAddress, kPre, KX_INTEGER_LINES("\n", "GenApi::gcstring"), KX_INTEGER_LINES_IF_WRITABLE},
    {ESampleCode::Float, kPre,
     "//SmartPointer for IFloat interface pointer\n"
     "GenApi::CFloatPtr pIFloat(pINode);\n\n"
     "//Get minimum value allowed\n"
     "double dblMin = pIFloat->GetMin();\n\n"
     "//Get maximum value allowed\n"
     "double dblMax = pIFloat->GetMax();\n\n"
     "//Get increment mode\n"
     "GenApi::EIncMode eIncMode = pIFloat->GetIncMode();\n\n"
     "//Get increment\n"
     "double dblInc = pIFloat->GetInc();\n\n"
     "//Get recommended representation\n"
     "GenApi::ERepresentation eRepresentation = pIFloat->GetIncMode();\n\n"
     "//Get the physical unit name\n"
     "GenICam::gcstring strUnit = pIFloat->GetUnit();\n\n"
     "//Get node value\n"
     "double dbl%1 = pIFloat->GetValue();\n\n",
     "//Set node value\n"
     "pIFloat->SetValue(dbl%1);\n\n"},
    {ESampleCode::Enumeration, kPreWithBlank,
     "//SmartPointer for IEnumeration interface pointer\n"
     "GenApi::CEnumerationPtr pIEnumeration(pINode);\n"
     "int64_t nValue = pIEnumeration->GetIntValue();\n"
     "GenApi::CEnumEntryPtr pICurrentEnumEntry(pIEnumeration->GetCurrentEntry());\n"
     "\n"
     "GenApi::NodeList_t aNodeList;\n"
     "pIEnumeration->GetEntries(aNodeList);\n"
     "for (NodeList_t::iterator ptr = aNodeList.begin(); ptr != aNodeList.end(); ++ptr)\n"
     "{\n"
     "  if(GenApi::IsAvailable(*ptr))\n"
     "  {\n"
     "    GenApi::CEnumEntryPtr pIEnumEntry(*ptr);\n"
     "    int64_t nEnumEntryValue = pIEnumEntry->GetValue();\n"
     "    GenICam::gcstring strEnumEntryName = pIEnumEntry->GetSymbolic();\n"
     "  }\n"
     "}\n\n",
     "GenApi::CEnumEntryPtr pIEnumEntry(pIEnumeration->GetEntryByName(\"%1\"));\n"
     "pIEnumeration->SetIntValue(pIEnumEntry->GetValue());\n"},
};

#undef KX_INTEGER_LINES
#undef KX_INTEGER_LINES_IF_WRITABLE

/// The lines that set an enumeration to its present entry.
QString EnumerationSelectorLines(const QString& strName, GenApi::IEnumeration& enumeration)
{
    GenApi::CEnumEntryPtr pEntry(enumeration.GetCurrentEntry());
    return Fill("\nGenApi::CEnumerationPtr p%1(pINodeMap->GetNode(\"%1\"));\n"
                "GenApi::CEnumEntryPtr p%2 = p%1->GetEntryByName(\"%2\");\n"
                "int64_t i%2Value = p%2->GetValue();\n"
                "p%1->SetIntValue(i%2Value);\n",
                {strName, ToQString(pEntry->GetSymbolic())});
}

} // namespace

QString SampleCode(ESampleCode eKind, bool bWritable, const QString& strName)
{
    for (const CBlock& block : kBlocks) {
        if (block.eKind == eKind)
            return block.szBegin + Fill(block.szLines, {strName}) +
                   (bWritable ? Fill(block.szLinesIfWritable, {strName}) : QString()) + "</pre>";
    }
    return {};
}

QString CCustomPropertyGridProperty_Base::GetDescription_GetNodeAndCheckAccess()
{
    return kPre +
           Fill("//Retrieves the node from the central map by Name\n"
                "GenApi::CNodePtr pINode(pINodeMap->GetNode(\"%1\"));\n\n"
                "//Checks if a node is writable\n"
                "bool isWritable = GenApi::IsWritable(pINode);\n\n"
                "//Checks if a node is readable\n"
                "bool isReadable = GenApi::IsReadable(pINode);\n\n"
                "//Checks if a node is available\n"
                "bool isAvailable = GenApi::IsAvailable(pINode);\n",
                {ToQString(m_pNode->GetName())}) +
           "</pre>";
}

void CCustomPropertyGridProperty_Base::AddSelectorDescription(QString& strOut, GenApi::INode* pNode,
                                                              bool bFirst)
{
    // The list has the selectors of the selectors too, outer ones first, each of them once.
    GenApi::FeatureList_t selectors;
    GenApi::CSelectorSet(pNode).GetSelectorList(selectors, true);
    if (bFirst && !selectors.empty())
        strOut = "//Selector";
    for (GenApi::IValue* const pSelector : selectors) {
        const QString strName = ToQString(pSelector->GetNode()->GetName());
        if (auto* const pEnumeration = dynamic_cast<GenApi::IEnumeration*>(pSelector))
            strOut += EnumerationSelectorLines(strName, *pEnumeration);
        else if (auto* const pInteger = dynamic_cast<GenApi::IInteger*>(pSelector))
            strOut += Fill("\nGenApi::CIntegerPtr p%1(pINodeMap->GetNode(\"%1\"));\np%1->SetValue(%2);\n",
                           {strName, QString::number(pInteger->GetValue())});
    }
}

} // namespace KxApi
