// SPDX-License-Identifier: Apache-2.0
// What the user looks for among the rows.
#pragma once

#include <QRegExp>
#include <QString>
#include <QStringList>

namespace KxApi
{

/// A filter text, ready for many rows. Letters match whatever their case.
class CRowFilter
{
public:
    /// @param bRegex the text is a regular expression, which a row has to match as a whole; one that is
    /// broken, or of absurd size, matches nothing. Otherwise "|" stands between alternatives, each of which a
    /// row may contain; with "|" in the text they are regular expressions too.
    CRowFilter(const QString& strText, bool bRegex);

    bool Matches(const QString& strRow) const;

private:
    void SetPattern(const QString& strPattern);

    QStringList m_listParts; // one of them has to be contained; unused with a pattern
    QRegExp m_pattern;
    bool m_bPattern = false;
    bool m_bNothing = false;
};

} // namespace KxApi
