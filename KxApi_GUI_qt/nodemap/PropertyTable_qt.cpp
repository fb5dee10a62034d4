// SPDX-License-Identifier: Apache-2.0
#include "nodemap/PropertyTable_qt.h"

#include "nodemap/CustomPropertyGridProperty_Boolean_qt.h"
#include "nodemap/CustomPropertyGridProperty_Category_qt.h"
#include "nodemap/CustomPropertyGridProperty_Command_qt.h"
#include "nodemap/CustomPropertyGridProperty_Enumeration_qt.h"
#include "nodemap/CustomPropertyGridProperty_Float_qt.h"
#include "nodemap/CustomPropertyGridProperty_IPAddress_qt.h"
#include "nodemap/CustomPropertyGridProperty_Integer_qt.h"
#include "nodemap/CustomPropertyGridProperty_Register_qt.h"
#include "nodemap/CustomPropertyGridProperty_String_qt.h"

#include <optional>

namespace KxApi
{
namespace
{

using Make = CCustomPropertyGridProperty_Base* (*)(IKxNodeMapDisplayWndInside*, QWidget*, GenApi::INode*,
                                                   IPropertyCtrlEvent*);

struct CPropertyRow
{
    GenApi::EInterfaceType eType;
    std::optional<GenApi::ERepresentation> eRepresentation; // of integers; none for all others
    Make pMake;
};

template <class TProperty>
CCustomPropertyGridProperty_Base* New(IKxNodeMapDisplayWndInside* pWnd, QWidget* pParent,
                                      GenApi::INode* pNode, IPropertyCtrlEvent* pEvent)
{
    return new TProperty(pWnd, pParent, pNode, pEvent);
}

enum class ELineEdit
{
    Always,
    ByMaximum,
};

template <ELineEdit kLineEdit>
CCustomPropertyGridProperty_Base* NewInteger(IKxNodeMapDisplayWndInside* pWnd, QWidget* pParent,
                                             GenApi::INode* pNode, IPropertyCtrlEvent* pEvent)
{
    const auto bUseLineEdit =
        kLineEdit == ELineEdit::Always ? std::optional<bool>(true) : std::optional<bool>();
    return new CCustomPropertyGridProperty_Integer(pWnd, pParent, pNode, pEvent, bUseLineEdit);
}

// clang-format off
const CPropertyRow kRows[] = {
    {GenApi::intfIInteger,     GenApi::Linear,      &NewInteger<ELineEdit::ByMaximum>},
    {GenApi::intfIInteger,     GenApi::Logarithmic, &NewInteger<ELineEdit::ByMaximum>},
    {GenApi::intfIInteger,     GenApi::IPV4Address, &New<CCustomPropertyGridProperty_IPAddress>},
    {GenApi::intfIInteger,     {},                  &NewInteger<ELineEdit::Always>},
    {GenApi::intfIBoolean,     {},                  &New<CCustomPropertyGridProperty_Boolean>},
    {GenApi::intfICommand,     {},                  &New<CCustomPropertyGridProperty_Command>},
    {GenApi::intfIFloat,       {},                  &New<CCustomPropertyGridProperty_Float>},
    {GenApi::intfIString,      {},                  &New<CCustomPropertyGridProperty_String>},
    {GenApi::intfIRegister,    {},                  &New<CCustomPropertyGridProperty_Register>},
    {GenApi::intfICategory,    {},                  &New<CCustomPropertyGridProperty_Category>},
    {GenApi::intfIEnumeration, {},                  &New<CCustomPropertyGridProperty_Enumeration>},
};
// clang-format on

} // namespace

CCustomPropertyGridProperty_Base* MakeProperty(IKxNodeMapDisplayWndInside* pWnd, QWidget* pParent,
                                               GenApi::INode* pNode, IPropertyCtrlEvent* pEvent)
{
    const GenApi::EInterfaceType eType = pNode->GetPrincipalInterfaceType();
    std::optional<GenApi::ERepresentation> eRepresentation;
    if (eType == GenApi::intfIInteger)
        eRepresentation = GenApi::CIntegerPtr(pNode)->GetRepresentation();
    for (const CPropertyRow& row : kRows) {
        if (row.eType == eType && (!row.eRepresentation || row.eRepresentation == eRepresentation))
            return row.pMake(pWnd, pParent, pNode, pEvent);
    }
    return nullptr;
}

} // namespace KxApi
