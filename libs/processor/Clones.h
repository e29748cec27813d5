// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// PROCESSOR_CLONES builds a function three times, for the x86-64 baseline (SSE2), v3 (AVX2, FMA)
// and v4 (AVX-512), and lets the loader pick, so that one binary runs everywhere and fast. The
// function itself holds the plain loop; the compiler makes the vectors. Helpers called from it must
// be always_inline to become part of each copy.
//
// PROCESSOR_DISPATCH tells whether the loader may pick at all. The sanitizers' instrumentation is
// not set up when it does, so they get the baseline. So does what clang builds, which knows no
// levels of x86-64 as versions of a function.
#if defined(__x86_64__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)                   \
    && !defined(__SANITIZE_THREAD__)
#define PROCESSOR_DISPATCH 1
#define PROCESSOR_CLONES [[gnu::target_clones("default", "arch=x86-64-v3", "arch=x86-64-v4")]]
#else
#define PROCESSOR_DISPATCH 0
#define PROCESSOR_CLONES
#endif
