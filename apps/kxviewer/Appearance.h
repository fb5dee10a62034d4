// SPDX-License-Identifier: Apache-2.0
// Colours and language of the viewer.
#pragma once

#include <QIcon>
#include <QString>

/// Whether the palette in use is dark.
bool IsDark();

/// Light or dark colours for all windows. GUI thread.
void SetDark(bool bDark);

/// Translates the viewer, and the SDK's windows in it, from now on: into "de" or "en", or with an empty name
/// into the user's language. Unknown languages stay English. Before the first window.
void SetLanguage(const QString& strLanguage);

/// The program's icon.
QIcon ViewerIcon();
