// SPDX-License-Identifier: Apache-2.0
// The thread that widgets belong to.
#pragma once

#include <functional>

class QObject;

namespace KxApi
{

/// Whether this is the thread of the application object; false while there is none.
bool IsGuiThread();

/// Runs a function in the GUI thread, here when this is it; otherwise waits until that thread has come to it
/// and done it. What the function throws is thrown here. Raises RuntimeException when there is no application
/// object that windows could live in.
void RunInGuiThread(const std::function<void()>& function);

/// Runs a function in the GUI thread when that comes to it; never when the context, an object of that thread,
/// is gone by then. The function raises nothing. Any thread, as long as the context is there.
/// @param pContext null for the application.
void PostToGuiThread(QObject* pContext, std::function<void()> function);

} // namespace KxApi
