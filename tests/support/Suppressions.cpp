// SPDX-License-Identifier: GPL-3.0-or-later
// Reports of the sanitizers on libraries that are not ours, by the runtime that asks. Part of every
// test program and fuzzer of a sanitized build. A report on code of this tree is never listed here.

/// fontconfig keeps what it has read of the system's fonts to the end of the process, and Qt never
/// tells it to let go. Visible, as the runtime may be a library that looks for it.
extern "C" [[gnu::visibility("default")]] const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}
