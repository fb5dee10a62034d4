// SPDX-License-Identifier: Apache-2.0
#include "description/Description.h"

#include <xxhash.h>

#include <map>
#include <mutex>
#include <tuple>

namespace KxGenApi
{
namespace
{

using Key = std::tuple<XXH64_hash_t, XXH64_hash_t, size_t, ContentType>;

Key KeyOf(std::string_view content, ContentType type)
{
    const XXH128_hash_t hash = XXH3_128bits(content.data(), content.size());
    return {hash.high64, hash.low64, content.size(), type};
}

/// The descriptions that somebody holds.
class Registry
{
public:
    std::shared_ptr<const Description> Find(const Key& key)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_living.find(key);
        return found == m_living.end() ? nullptr : found->second.lock();
    }

    /// Hands out what another thread may have read meanwhile.
    std::shared_ptr<const Description> Add(const Key& key, std::shared_ptr<const Description> description)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (auto entry = m_living.begin(); entry != m_living.end();)
            entry = entry->second.expired() ? m_living.erase(entry) : std::next(entry);
        const auto [entry, isNew] = m_living.emplace(key, description);
        if (!isNew)
            if (auto other = entry->second.lock())
                return other;
        entry->second = description;
        return description;
    }

private:
    std::mutex m_mutex; // guards m_living; nothing is called while it is held
    std::map<Key, std::weak_ptr<const Description>> m_living;
};

// Never destroyed: node maps may live in static objects.
Registry& TheRegistry()
{
    static Registry* const kRegistry = std::make_unique<Registry>().release();
    return *kRegistry;
}

} // namespace

std::shared_ptr<const Description> ReadSharedDescription(std::string_view content, ContentType type)
{
    const Key key = KeyOf(content, type);
    if (auto living = TheRegistry().Find(key))
        return living;
    return TheRegistry().Add(key, ReadDescription(content, type));
}

} // namespace KxGenApi
