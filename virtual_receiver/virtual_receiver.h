// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The virtual receiver's own interface, beside the FT_ functions: choose the scene, the pace and
/// the EEPROM file, inject faults, read back what the device was told.
///
/// There is one device per process. All functions may be called from any thread, with the device
/// open or closed, except where said. Those that return int give 0 for success, or -1 and a
/// one-line reason in vr_last_error(). No function throws: whatever goes wrong inside is such a
/// reason, and the others then return 0, "" or nothing.

#include <cstddef>
#include <cstdint>

extern "C" {
/// How fast the stream is delivered.
enum vr_pace {
    VR_PACE_REAL_TIME = 0, ///< at the commanded sample rate, by the monotonic clock
    VR_PACE_FREE = 1,      ///< as fast as it is read
    /// As fast as it is read, while samples granted by vr_add_credit() last. A read that they
    /// cannot fill returns nothing after its timeout and loses nothing.
    VR_PACE_CREDIT = 2,
};

/// What the device holds and has done since vr_reset().
struct vr_status
{
    std::uint32_t frequency_word;    ///< tuning word: 2^32 * f / 122.88 MHz
    double frequency_hz;             ///< the same in hertz
    std::uint32_t state_word;        ///< last state command
    std::uint32_t attenuator;        ///< steps of 0.5 dB, 0..63
    std::uint8_t adc_registers[256]; ///< data byte by register number
    int open;                        ///< 1 while a handle is open
    int streaming;                   ///< 1 while the stream bit is set
    double sample_rate_hz;           ///< rate of the commanded code
    std::uint64_t commands;          ///< command packets parsed
    std::uint64_t bad_bytes;         ///< written bytes that belong to no packet
    std::uint64_t frames_sent;       ///< stream frames delivered to FT_Read (whole ones)
    std::uint64_t samples_sent;      ///< complex samples in those frames
    std::uint64_t short_reads;       ///< reads that returned fewer bytes than asked
    std::uint64_t fifo_overruns;     ///< real time only: frames lost as nobody read in time
    std::uint64_t clipped_samples;   ///< samples limited at full scale
    int scene_ended;                 ///< 1 once a scene that does not repeat has been sent whole
    std::uint64_t reads;             ///< calls of FT_Read, which vr_get_calls() leaves out
};

/// Back to one attached device with the built-in scene, real-time pace, an in-memory EEPROM with
/// default calibration, no faults, no log; an open handle is closed.
void vr_reset(void);

/// The band built into the library.
int vr_scene_builtin(void);

/// A recording. format: "wav", "f64", "f32", "s16", "u8" (raw formats: interleaved I, Q,
/// little-endian, full scale 1.0) or null to take it from the file name. rate_hz: needed for raw
/// formats, 0 takes the header's. frequency_hz: radio frequency of the recording's zero hertz, 0
/// takes the header's or, without one, follows the device's tuning at stream start. Wherever they
/// come from, rates are 1 Hz to 100 MHz and frequencies up to 800 MHz.
int vr_scene_file(const char *path, const char *format, double rate_hz, double frequency_hz);

/// What was not as it should be in the file of this thread's last good vr_scene_file(), which is
/// played as far as it goes: "the file is shorter than its header says". Empty: nothing.
const char *vr_scene_notice(void);

/// A band described in a text file (see docs/scenes.md).
int vr_scene_band(const char *path);

/// Samples from memory, interleaved I, Q; copied. repeat 1 starts again at the end. The limits of
/// rate and frequency are those of a file.
int vr_scene_samples(
    const double *iq, std::size_t samples, double rate_hz, double frequency_hz, int repeat);

/// Radio frequency of the middle of the scene in hertz, 0 if it follows the device's tuning.
double vr_scene_frequency(void);

/// Width in hertz of what the scene has around its middle: a recording's rate, the span of a band's
/// stations.
double vr_scene_width(void);

/// Length of a finite scene in seconds, 0 if it never ends.
double vr_scene_seconds(void);

/// Goes on at so many seconds from the beginning of a recording, limited to its length. A scene
/// that never ends, and a band, have no positions.
int vr_scene_seek(double seconds);

/// Seconds from the beginning of a recording up to what has been sent of it, of this pass; 0 for
/// all else. A scene begins anew with the stream.
double vr_scene_position(void);

/// A recording begins again after its end (1), or the stream carries zeros there (0), as it does
/// after vr_reset().
void vr_scene_loop(int loop);

/// Stands still (1) or goes on (0); in between the stream carries zeros. Another scene, and
/// vr_reset(), go on.
void vr_scene_pause(int pause);

void vr_set_pace(enum vr_pace pace);

/// Adds to what may still be sent at VR_PACE_CREDIT, in complex samples at the device rate.
void vr_add_credit(std::uint64_t samples);

/// Keeps the EEPROM user area in a file of 1 to 1024 bytes; created with default calibration if it
/// is not there. A change replaces the whole file, so that a failure leaves the one before. null
/// goes back to memory.
int vr_set_eeprom(const char *path);

/// The EEPROM user area as bytes; at most capacity are copied. Returns its size.
std::size_t vr_get_eeprom(std::uint8_t *bytes, std::size_t capacity);
int vr_put_eeprom(const std::uint8_t *bytes, std::size_t size);

/// Adds faults, separated by commas, for example "lost-byte@1000" (see docs/faults.md);
/// "none" removes all.
int vr_fault(const char *spec);

/// Plugs the device out (0) or in (1). An open handle of a device that is out fails on every call
/// but FT_Close, and stays dead after the device is back.
void vr_set_plugged(int plugged);

/// Other USB chips in the list before the receiver, so that it is not at index 0. They have another
/// product name and are always in use by someone else.
void vr_set_foreign_devices(unsigned count);

/// A consistent copy of the device's state.
void vr_get_status(struct vr_status *status);

/// The packets received so far, 11 bytes each, oldest first; at most capacity packets are copied.
/// Returns their number.
std::size_t vr_get_commands(std::uint8_t *bytes, std::size_t capacity);

/// The FT_ calls made so far as text, one per line ("FT_SetBitMode(255, 64)"), for checks of their
/// order. Arguments are the numbers, without handle and pointers; FT_Read is not listed but counted
/// in the status. Valid until the next call of this function on the same thread.
const char *vr_get_calls(void);

/// Forgets those calls and packets; the counts in the status go on. For runs of many hours.
void vr_forget_calls(void);

/// Reason of the last failure on this thread.
const char *vr_last_error(void);
}
