// SPDX-License-Identifier: Apache-2.0
// The area around a plot.
#pragma once

#include <QScrollArea>

namespace KxApi
{

/// Scrolls the graph widget. GUI thread.
class CDisplayGraphScrollArea : public QScrollArea
{
    Q_OBJECT

public:
    using QScrollArea::QScrollArea;
};

} // namespace KxApi
