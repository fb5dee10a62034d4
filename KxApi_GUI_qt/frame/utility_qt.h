// SPDX-License-Identifier: Apache-2.0
// Small things that the windows share.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>

#include <QString>
#include <exception>

namespace KxApi
{

/// Texts of the interface are UTF-8.
inline QString ToQString(const GenICam::gcstring& strText) { return QString::fromUtf8(strText.c_str()); }
inline GenICam::gcstring ToGcstring(const QString& strText)
{
    return GenICam::gcstring(strText.toUtf8().constData());
}

/// To be called while an exception is handled: hands it on as one of the GenICam family, whatever it is.
/// @param tell takes a const GenICam::GenericException&; what it raises is dropped.
template <class Tell>
void TellCurrentException(Tell&& tell) noexcept
{
    try {
        try {
            throw;
        } catch (const GenICam::GenericException& e) {
            tell(e);
        } catch (const std::exception& e) {
            tell(GenICam::GenericException(RUNTIME_EXCEPTION("%s", e.what())));
        }
    } catch (...) { // NOLINT(bugprone-empty-catch): there is nobody left to tell
    }
}

} // namespace KxApi
