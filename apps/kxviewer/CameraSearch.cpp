// SPDX-License-Identifier: Apache-2.0
#include "CameraSearch.h"

#include <utility>

CameraSearch::CameraSearch(KxApps::Cameras& cameras)
    : m_cameras(cameras)
{}

CameraSearch::~CameraSearch()
{
    for (std::thread& thread : m_threads)
        thread.join();
}

template <typename Call>
void CameraSearch::Later(Call call)
{
    // Calls that still wait when this object goes, go with it.
    QMetaObject::invokeMethod(this, std::move(call), Qt::QueuedConnection);
}

void CameraSearch::Start()
{
    m_threads.emplace_back([this] {
        m_cameras.OpenProducers();
        Later([this] { OnOpened(); });
    });
}

void CameraSearch::OnOpened()
{
    m_bOpen = true;
    KxApi::CIKxSystemPtrArray& systems = m_cameras.SystemArray();
    m_nSearching = systems.GetSize();
    for (size_t i = 0; i < systems.GetSize(); ++i) {
        m_threads.emplace_back([this, pSystem = systems[i]] {
            Later([this, entry = KxApps::Cameras::Search(pSystem)] { OnSearched(entry); });
        });
    }
    emit ProducersOpened();
    if (m_nSearching == 0)
        emit SystemSearched();
}

void CameraSearch::OnSearched(KxApps::Cameras::SystemEntry entry)
{
    m_cameras.Take(std::move(entry));
    --m_nSearching;
    emit SystemSearched();
}
