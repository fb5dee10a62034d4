// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nodemap/CustomPropertyGridProperty_Typed_qt.h"

class QComboBox;

namespace KxApi
{

/// A choice, in a combo box with the entries that are available.
class CCustomPropertyGridProperty_Enumeration final : public CPropertyOf<GenApi::CEnumerationPtr>
{
public:
    using CPropertyOf::CPropertyOf;

    /// Reads the entries anew, too: now when they are on the screen, else when they get there.
    bool SetVisibility(GenApi::EVisibility eVisibility, bool bForce, bool bAdjustSize) override;

    /// Whether the device leaves the present entry by itself. Reads the node unless its value is shown.
    bool IsSelfClearing();

    /// Writes the first entry of that display name. Raises what the writing raises.
    void OnCurrentIndexChanged(const QString& strText);

    QString GetInterfaceSpecificDescription() override;
    QString GetInterfaceSpecificDescriptionSampleCode() override;

protected:
    void MakeEditor() override;
    void ConnectEditor() override;
    void ShowValue(GenApi::EAccessMode eMode) override;

private:
    GenApi::CEnumEntryPtr CurrentEntry();
    QStringList AvailableEntries();
    void FillComboBox(const QString& strCurrent);
    QString EntryRows(int64_t nValue);

    QComboBox* m_pComboBox = nullptr;
    QStringList m_listShown; // the lines of the combo box
    bool m_bSelfClearing = false;
};

} // namespace KxApi
