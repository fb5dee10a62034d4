// SPDX-License-Identifier: Apache-2.0
#pragma once

class ActionTable;
class QWidget;

/// Shows what mouse and keys do; the keys are those of the table. GUI thread; doesn't wait.
void ShowHelp(QWidget* pParent, const ActionTable& actions);

/// Version and licence.
void ShowAbout(QWidget* pParent);
