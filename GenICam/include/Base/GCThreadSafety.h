// SPDX-License-Identifier: Apache-2.0
#pragma once

/// \file
/// Clang's thread-safety annotations by our names; other compilers see nothing.
///
/// A member that a lock protects says KXGC_GUARDED_BY(m_lock); a function to be called with the lock held
/// says KXGC_REQUIRES(m_lock), one that takes it itself KXGC_EXCLUDES(m_lock). The order of two locks stands
/// at the second one: KXGC_ACQUIRED_AFTER(m_first).

#if defined(__clang__)
#define KXGC_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define KXGC_THREAD_ATTRIBUTE(x)
#endif

#define KXGC_CAPABILITY(name) KXGC_THREAD_ATTRIBUTE(capability(name))
#define KXGC_SCOPED_CAPABILITY KXGC_THREAD_ATTRIBUTE(scoped_lockable)
#define KXGC_GUARDED_BY(lock) KXGC_THREAD_ATTRIBUTE(guarded_by(lock))
#define KXGC_PT_GUARDED_BY(lock) KXGC_THREAD_ATTRIBUTE(pt_guarded_by(lock))
#define KXGC_ACQUIRED_BEFORE(...) KXGC_THREAD_ATTRIBUTE(acquired_before(__VA_ARGS__))
#define KXGC_ACQUIRED_AFTER(...) KXGC_THREAD_ATTRIBUTE(acquired_after(__VA_ARGS__))
#define KXGC_REQUIRES(...) KXGC_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define KXGC_EXCLUDES(...) KXGC_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
#define KXGC_ACQUIRE(...) KXGC_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define KXGC_RELEASE(...) KXGC_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
#define KXGC_TRY_ACQUIRE(...) KXGC_THREAD_ATTRIBUTE(try_acquire_capability(__VA_ARGS__))
#define KXGC_ASSERT_CAPABILITY(lock) KXGC_THREAD_ATTRIBUTE(assert_capability(lock))
#define KXGC_RETURN_CAPABILITY(lock) KXGC_THREAD_ATTRIBUTE(lock_returned(lock))
/// For the few functions whose locking the analysis cannot follow; each use says why.
#define KXGC_NO_THREAD_SAFETY_ANALYSIS KXGC_THREAD_ATTRIBUTE(no_thread_safety_analysis)
