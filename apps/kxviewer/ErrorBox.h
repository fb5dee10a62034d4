// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Base/GCException.h>

class QString;
class QWidget;

/// Keeps an error for the diagnostic archive.
void LogViewerError(const QString& strText);

/// Tells the user what went wrong, without waiting: what was tried in the user's words, the reason below it,
/// and behind a button where in the program it arose. Keeps it too. GUI thread.
void ShowError(QWidget* pParent, const QString& strTried, const GenICam::GenericException& error);
