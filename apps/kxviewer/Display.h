// SPDX-License-Identifier: Apache-2.0
// The application object, on machines that may have no display.
#pragma once

#include <QApplication>
#include <memory>

/// Makes the application object. Where there is no display to open, it says so in a line on standard error
/// and ends the process with exit code 1; Qt by itself would abort it.
std::unique_ptr<QApplication> MakeApplication(int& argc, char** argv);
