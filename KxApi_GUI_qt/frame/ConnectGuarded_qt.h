// SPDX-License-Identifier: Apache-2.0
// Connections whose exceptions don't reach the event loop.
#pragma once

#include "frame/BaseDialog_qt.h"

#include <QObject>

namespace KxApi
{

/// Connects a signal to a function that takes the signal's first arguments, and ends with the dialog. What
/// the function raises becomes the window's error event.
template <class Sender, class... Arguments, class Class, class Function>
void ConnectGuarded(CBaseDialogEx* pDialog, Sender* pSender, void (Class::*signal)(Arguments...),
                    Function function)
{
    QObject::connect(pSender, signal, pDialog, [pDialog, function](Arguments... arguments) {
        pDialog->Guarded([&] {
            if constexpr (std::is_invocable_v<const Function&, Arguments...>)
                function(arguments...);
            else
                function();
        });
    });
}

} // namespace KxApi
