// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/thread/SpinBody.h"

/// The lock of the audio rings and of the spectrum. It yields before the first retry and then every
/// 100 failed tries.
class SpinLock : public vm::thread::SpinBody<0, 100>
{ };

/// Holds a SpinLock for the length of a scope.
class SpinLocker
{
public:
    explicit SpinLocker(SpinLock &lock) noexcept : m_lock(lock) { m_lock.lock(); }
    ~SpinLocker() { m_lock.unlock(); }
    SpinLocker(const SpinLocker &) = delete;
    SpinLocker &operator=(const SpinLocker &) = delete;

private:
    SpinLock &m_lock;
};
