// SPDX-License-Identifier: Apache-2.0
// What a process has once for each file, however many use it.
#pragma once

#include <KxSDKCommon/KxMutex.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>

namespace KxApi
{
namespace Detail
{

/// Objects by path, each made by the first of its users and destroyed by the last. Making and destroying the
/// object of a path takes turns, and delays that of no other path. Any thread.
template <class T>
class CSharedByPath
{
public:
    /// A path that was ever used; it stays as long as the table, so that an object that is being destroyed
    /// never meets its successor.
    class CEntry
    {
    public:
        /// Uses the object, which `make` makes if there is none. What `make` raises comes through.
        template <class Make>
        T* Take(Make&& make)
        {
            const CKxMutexLock lock(m_mutex);
            if (!m_object)
                m_object = make();
            ++m_users;
            return m_object.get();
        }
        /// Uses it once more, for those who know that it is in use.
        void Hold()
        {
            const CKxMutexLock lock(m_mutex);
            ++m_users;
        }
        void LetGo()
        {
            const CKxMutexLock lock(m_mutex);
            if (--m_users == 0)
                m_object.reset();
        }

    private:
        CKxMutex m_mutex; // held while the object is made and destroyed
        std::unique_ptr<T> m_object KXGC_GUARDED_BY(m_mutex);
        size_t m_users KXGC_GUARDED_BY(m_mutex) = 0;
    };

    CEntry& Of(const std::string& path)
    {
        const CKxMutexLock lock(m_mutex);
        return m_entries[path];
    }

private:
    CKxMutex m_mutex;
    std::map<std::string, CEntry> m_entries KXGC_GUARDED_BY(m_mutex);
};

} // namespace Detail
} // namespace KxApi
