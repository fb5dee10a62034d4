// SPDX-License-Identifier: Apache-2.0

#include "StreamBuffers.h"

#include <algorithm>

namespace KxProducer
{
namespace
{

template <class List>
void Erase(List& list, const CStreamQueues::BufferPtr& buffer)
{
    list.erase(std::remove(list.begin(), list.end(), buffer), list.end());
}

} // namespace

void CStreamQueues::Remove(const BufferPtr& buffer) { Erase(m_buffers, buffer); }

void CStreamQueues::Clear()
{
    m_buffers.clear();
    m_input.clear();
    m_output.clear();
}

size_t CStreamQueues::CountOf(EBufferState state) const
{
    return static_cast<size_t>(
        std::count_if(m_buffers.begin(), m_buffers.end(),
                      [state](const BufferPtr& buffer) { return buffer->state == state; }));
}

void CStreamQueues::Put(const BufferPtr& buffer, EBufferState state)
{
    if (buffer->state == EBufferState::Output)
        Erase(m_output, buffer);
    else if (buffer->state == EBufferState::Input)
        Erase(m_input, buffer);
    buffer->state = state;
    if (state == EBufferState::Input)
        m_input.push_back(buffer);
    if (state == EBufferState::Output) {
        m_output.push_back(buffer);
        ++fired;
        changed.notify_one();
    }
}

void CStreamQueues::Move(EBufferState from, EBufferState to)
{
    std::vector<BufferPtr> moving; // in the order that they would have been filled or fetched in
    if (from == EBufferState::Input || from == EBufferState::Output) {
        const std::deque<BufferPtr>& list = from == EBufferState::Input ? m_input : m_output;
        moving.assign(list.begin(), list.end());
    } else {
        std::copy_if(m_buffers.begin(), m_buffers.end(), std::back_inserter(moving),
                     [from](const BufferPtr& buffer) { return buffer->state == from; });
    }
    for (const BufferPtr& buffer : moving)
        Put(buffer, to);
}

CStreamQueues::BufferPtr CStreamQueues::TakeInput()
{
    std::deque<BufferPtr>& list =
        m_input.empty() && handling != EBufferHandling::OldestFirst ? m_output : m_input;
    if (list.empty())
        return nullptr;
    BufferPtr buffer = list.front();
    Put(buffer, EBufferState::Filling);
    return buffer;
}

void CStreamQueues::PutFirst(const BufferPtr& buffer)
{
    buffer->state = EBufferState::Input;
    m_input.push_front(buffer);
}

void CStreamQueues::PutFilled(const BufferPtr& buffer)
{
    if (handling == EBufferHandling::NewestOnly)
        Move(EBufferState::Output, EBufferState::Input);
    Put(buffer, EBufferState::Output);
}

std::string CStreamQueues::Front() const
{
    const CBuffer& buffer = *m_output.front();
    const GenTL::EVENT_NEW_BUFFER_DATA data = {buffer.GetHandle(), buffer.user};
    return {reinterpret_cast<const char*>(&data), sizeof data};
}

void CStreamQueues::PopFront()
{
    m_output.front()->state = EBufferState::Idle;
    m_output.pop_front();
}

} // namespace KxProducer
