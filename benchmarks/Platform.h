// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QtGlobal>

/// Benchmarks of windows need no display: they run on Qt's offscreen platform, unless QT_QPA_PLATFORM names
/// another one. It is chosen when the program starts.
[[maybe_unused]] inline const bool kHasPlatform =
    !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || qputenv("QT_QPA_PLATFORM", "offscreen");
