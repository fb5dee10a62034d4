// SPDX-License-Identifier: Apache-2.0
// Features as text that can be pasted elsewhere.
#pragma once

#include <GenApi/GenApi.h>

#include <QString>

/// UTF-8 of a node map as Qt has it.
inline QString TextOf(const GenICam::gcstring& strText) { return QString::fromUtf8(strText.c_str()); }

/// The value as kx and feature files have it; empty when it can't be read. Raises nothing.
QString ValueText(GenApi::INode& node);

/// A line for a shell that sets the feature to its present value, or executes the command. Without a camera
/// ("") that stands as a blank to be filled in.
QString SetLine(GenApi::INode& node, const QString& strCamera, const QString& strModule);

/// The same as C++ over a node map `pINodeMap`.
QString CppLine(GenApi::INode& node);
