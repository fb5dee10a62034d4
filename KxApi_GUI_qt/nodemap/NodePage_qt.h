// SPDX-License-Identifier: Apache-2.0
// The page about a node: what its tables say, as HTML.
#pragma once

#include "frame/utility_qt.h"

#include <GenApi/GenApi.h>

#include <QString>
#include <initializer_list>

namespace KxApi
{

/// The template with "%1", "%2", ... replaced by the texts, which aren't looked through for such marks
/// themselves.
QString Fill(const char* szTemplate, std::initializer_list<QString> texts);

/// A text of a node, for the page.
inline QString HtmlOf(const GenICam::gcstring& strText) { return ToQString(strText).toHtmlEscaped(); }

/// Words for numbers of the standard; empty for one that it hasn't.
QString WordOf(GenApi::ERepresentation eRepresentation);
QString InterfaceWord(GenApi::INode& node);

/// The row of a physical unit; empty for none.
QString UnitRow(const GenICam::gcstring& strUnit);
/// Limits, increment, unit and representation. Raises what the node raises.
QString IntegerRows(GenApi::IInteger& integer);

/// The whole table about what any node has.
QString BasicTable(GenApi::INode& node);
/// The table about the value, made of its rows.
QString ValueTable(const QString& strRows);
/// The table about how to get at the node.
QString SampleCodeTable(const QString& strCode);

} // namespace KxApi
