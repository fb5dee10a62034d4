// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nodemap/CustomPropertyGridProperty_Typed_qt.h"
#include "nodemap/SampleCode_qt.h"

namespace KxApi
{

/// The cell of a category, which stays empty.
class CCustomPropertyGridProperty_Category final : public CPropertyOf<GenApi::CCategoryPtr>
{
public:
    using CPropertyOf::CPropertyOf;

    void UpdateDisplayValue() override { NoteUpdated(); }
    QString GetInterfaceSpecificDescription() override { return {}; }
    QString GetInterfaceSpecificDescriptionSampleCode() override
    {
        return SampleCode(ESampleCode::Category, false);
    }

protected:
    void ShowValue(GenApi::EAccessMode) override {}
};

} // namespace KxApi
