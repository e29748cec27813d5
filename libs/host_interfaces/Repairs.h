// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <array>
#include <bitset>
#include <cstddef>

/// A dead end of the receiver that a host can have mended; the number of its row in the table.
enum class Repair : std::size_t {
    Stream,
    Meter,
    Agc,
    Numbers,
    Spectrum,
    Ctcss,
    Pace,
    Cable,
    Fade,
    Wfm,
};

/// A row of the table of repairs.
struct RepairRow
{
    Repair repair;
    const char *name;
    const char *help; ///< what it does, for the user, without a full stop
};

inline constexpr std::array kRepairTable = {
    RepairRow{Repair::Stream, "stream",
        "A stream that has lost its frames goes on, and reads that fail take no processor"},
    RepairRow{Repair::Meter, "meter", "A level that is no number does not stay on the S-meter"},
    RepairRow{Repair::Agc, "agc", "Gain control that is set ahead of a start holds from there on"},
    RepairRow{Repair::Numbers, "numbers",
        "A sample that is no number does not silence a mode, a calibration that is none is "
        "refused"},
    RepairRow{
        Repair::Spectrum, "spectrum", "A panorama that gets no time does not end the reception"},
    RepairRow{Repair::Ctcss, "ctcss", "The tone squelch opens for each of its tones at every rate"},
    RepairRow{Repair::Pace, "pace", "S-meter and squelch follow a level as fast at every rate"},
    RepairRow{
        Repair::Cable, "cable", "The virtual cable is fed after the gain control, and in wide FM"},
    RepairRow{Repair::Fade, "fade",
        "A change of mode or gain control mutes for a moment instead of 0.4 s"},
    RepairRow{
        Repair::Wfm, "wfm", "Wide FM has its region's treble, and mono outlasts a change of rate"},
};

static_assert([] {
    for (std::size_t i = 0; i < kRepairTable.size(); ++i)
        if (std::size_t(kRepairTable[i].repair) != i)
            return false;
    return true;
}());

/// Which dead ends a host wants to have mended.
///
/// A device by itself does to the sample what hosts have always known of it. A host that wants a
/// repair names it in a string list, the dynamic property kProperty of the device, ahead of init().
/// What each repair does, and why it is not simply so, is told in docs/repairs.md.
class Repairs
{
public:
    static constexpr const char *kProperty = "repairs";

    /// None.
    Repairs() = default;
    static Repairs all();

    /// Those of these names. What is no name of the table does nothing and is added to `unknown`.
    static Repairs named(const QStringList &names, QStringList &unknown);

    bool has(Repair repair) const { return m_set[std::size_t(repair)]; }

    /// In the order of the table.
    QStringList names() const;

private:
    std::bitset<kRepairTable.size()> m_set;
};
