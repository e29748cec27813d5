// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Compiles a loop for several generations of processors; the right one is chosen at load time. Not
/// under the thread sanitizer, whose run time is not up yet when the choice is made.
#if !defined(__x86_64__) || defined(__SANITIZE_THREAD__)
#define VR_TARGET_CLONES
#else
#define VR_TARGET_CLONES [[gnu::target_clones("default,arch=x86-64-v3,arch=x86-64-v4")]]
#endif
