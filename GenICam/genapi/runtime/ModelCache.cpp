// SPDX-License-Identifier: Apache-2.0
#include "runtime/ModelCache.h"

#include <Base/GCException.h>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <map>
#include <mutex>
#include <string_view>
#include <tuple>
#include <utility>

namespace KxGenApi
{
namespace
{

using Key = std::tuple<uint64_t, uint64_t, size_t, ContentType>; // the same bytes may be no archive

struct Cache
{
    std::mutex lock; // innermost: nothing is taken while it is held
    std::map<Key, std::weak_ptr<Model>> models;
};

Cache& TheCache()
{
    static Cache* const cache = new Cache; // outlives maps in static objects
    return *cache;
}

Key KeyOf(std::string_view content, ContentType type)
{
    const XXH128_hash_t hash = XXH3_128bits(content.data(), content.size());
    return {hash.high64, hash.low64, content.size(), type};
}

std::shared_ptr<Model> Find(const Key& key)
{
    Cache& cache = TheCache();
    const std::lock_guard<std::mutex> guard(cache.lock);
    const auto found = cache.models.find(key);
    return found != cache.models.end() ? found->second.lock() : nullptr;
}

void Offer(const Key& key, const std::shared_ptr<Model>& model)
{
    Cache& cache = TheCache();
    const std::lock_guard<std::mutex> guard(cache.lock);
    for (auto entry = cache.models.begin(); entry != cache.models.end();)
        entry = entry->second.expired() ? cache.models.erase(entry) : std::next(entry);
    cache.models[key] = model;
}

// `take` gives the content away; it is called when there is something to parse.
template <typename Take>
std::shared_ptr<Model> Load(std::string_view content, ContentType type, GenApi::ECacheUsage_t usage,
                            const Take& take)
{
    if (usage == GenApi::CacheUsage_Ignore)
        return std::make_shared<Model>(ReadDescription(take(), type));

    const Key key = KeyOf(content, type);
    if (usage != GenApi::CacheUsage_ForceWrite) {
        if (std::shared_ptr<Model> model = Find(key))
            return model;
        if (usage == GenApi::CacheUsage_ForceRead)
            throw RUNTIME_EXCEPTION("The description of %zu bytes is not in use, and must not be parsed",
                                    content.size());
    }
    auto model = std::make_shared<Model>(ReadDescription(take(), type));
    Offer(key, model);
    return model;
}

} // namespace

std::shared_ptr<Model> LoadModel(std::string_view content, ContentType type, GenApi::ECacheUsage_t usage)
{
    return Load(content, type, usage, [&] { return std::string(content); });
}

std::shared_ptr<Model> LoadModel(std::string&& content, ContentType type, GenApi::ECacheUsage_t usage)
{
    return Load(content, type, usage, [&] { return std::move(content); });
}

bool ClearModelCache()
{
    Cache& cache = TheCache();
    const std::lock_guard<std::mutex> guard(cache.lock);
    const bool any = !cache.models.empty();
    cache.models.clear();
    return any;
}

} // namespace KxGenApi
