// SPDX-License-Identifier: Apache-2.0
// A description without a camera.
#pragma once

#include <QString>
#include <string>

/// Shows the features of a description file, plain or zipped, over memory until the user closes the window,
/// and returns the exit code. With a folder for pictures it saves one and ends. Raises RuntimeException that
/// names the file. GUI thread.
int ShowDescription(const std::string& strFile, const std::string& strPictures);
