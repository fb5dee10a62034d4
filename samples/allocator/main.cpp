// SPDX-License-Identifier: Apache-2.0
// The camera writes its images into memory of the program's own: here whole pages that are never swapped out,
// as frame grabbers and graphics cards want them. An image's context leads back to what the allocator knows
// of it.
//
// allocator [IMAGES], 10 when nothing is said
#include "FirstCamera.h"

#include <KxApi_TL/IKxAllocator.h>
#include <KxApi_TL/IKxImage.h>

#include <sys/mman.h>

#include <atomic>
#include <set>

using namespace KxApi;

// Lives until OnDeregister. It must not throw; its calls may come from threads of the SDK's.
struct PageAllocator final : IKxAllocator
{
    void Allocate(void** ppBuffer, size_t nSize, void** ppContext) override
    {
        void* const pPages =
            mmap(nullptr, nSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
        if (pPages == MAP_FAILED)
            return;           // no buffer: the SDK raises BadAllocException
        mlock(pPages, nSize); // as much as the system allows
        *ppBuffer = pPages;
        *ppContext = reinterpret_cast<void*>(++nBuffers); // the buffer's number
    }
    void Deallocate(void* pBuffer, size_t nSize, void*) override { munmap(pBuffer, nSize); }
    void OnDeregister() override { bInUse = false; }

    std::atomic<uintptr_t> nBuffers{0};
    std::atomic<bool> bInUse{true};
};

int main(int argc, char** argv)
try {
    PageAllocator allocator; // before the camera, which gives the memory back when it goes
    {
        const CKxApiAutoInitTerm sdk;
        Samples::FirstCamera camera;
        IKxStream& stream = camera.Stream();
        stream.SetAllocator(&allocator);
        stream.SetBufferCount(4);
        const uint64_t nImages = argc > 1 ? Samples::ImagesOf(argc, argv) : 10;
        stream.StartAcquisition(nullptr, nImages);
        std::set<void*> contexts;
        for (uint64_t n = 0; n < nImages; ++n) {
            const CKxAutoPtr<IKxStreamImageReleasable> image(stream.FetchImage(5000));
            if (!image)
                throw RUNTIME_EXCEPTION("no image came within five seconds");
            contexts.insert(image->GetUserContext());
        }
        stream.StopAcquisition();
        std::cout << nImages << " images in " << contexts.size() << " of " << allocator.nBuffers
                  << " buffers\n";
    }
    std::cout << (allocator.bInUse ? "the memory is still in use\n" : "the memory was given back\n");
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}
