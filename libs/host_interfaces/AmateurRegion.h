// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QLocale>
#include <QMetaType>
#include <QObject>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>
#include <tuple>

/// The amateur bands that apply where the user is.
///
/// The country decides the ITU region (the world's three parts with band plans of their own), and
/// country and region decide the band edges. The country and two switches live in "itu.ini" of the
/// settings folder; the region is worked out anew at each start. Edges are in hertz, both included.
///
/// One object serves the process, see instance(). GUI thread only; there is no lock.
class AmateurRegion : public QObject
{
    Q_OBJECT

public:
    /// ITU regions 1 to 3, counted from 0.
    enum Region : int {
        Region1 = 0,
        Region2 = 1,
        Region3 = 2,
    };
    Q_ENUM(Region)

    enum Band : int {
        Band160M = 0,
        Band80M = 1,
        Band60M = 2,
        Band40M = 3,
        Band30M = 4,
        Band20M = 5,
        Band17M = 6,
        Band15M = 7,
        Band12M = 8,
        Band11M = 9,
        Band10M = 10,
        Band6M = 11,
        Band2M = 12,
        Band07M = 13,
    };
    Q_ENUM(Band)

    struct BandInfo
    {
        bool available = false;
        quint64 low = 0;  // Hz
        quint64 high = 0; // Hz
        QString name;
    };

    /// Reads the settings file, or creates it on the first start. A second object starts from the
    /// file as the next run of the program would.
    explicit AmateurRegion(QObject *parent = nullptr);

    /// Creates the object on first use; it lives as long as the process.
    static AmateurRegion *instance();

    /// Fills the table that band() searches from the present country, region and switches.
    void init();

    /// All bands, whether available or not.
    QList<Band> bands() const;

    /// A band as country, region and switches have it now. Edges may be given for a band that is
    /// not available. A number that is no band gives an entry without name and edges.
    BandInfo getInfo(Band band) const;

    /// Position of the first band of the table around a frequency in hertz, available or not; -1 if
    /// there is none or init() was not called.
    int band(unsigned long long frequency) const;

    /// Edges of the 60 m band where the country has no limits of its own.
    QPair<quint64, quint64> band60M(Region region) const;

    /// A country's own limits of the 60 m band: whether it has any, low edge, high edge.
    std::tuple<bool, quint64, quint64> limits60M(QLocale::Country country) const;

    /// The switch decides for every country.
    bool avalible11M(QLocale::Country country) const;

    /// True if the country has limits of its own for the 60 m band.
    bool avalible60M(QLocale::Country country) const;

    /// The same of the country at the start; setCountry() does not touch it.
    bool avalible60M() const { return m_avalible60M; }

    /// Region 2 for a country without an entry.
    Region defaultRegion(QLocale::Country country) const;

    /// Country and region in two lines, for the user.
    QString info() const;

    /// Names in the order of QLocale::Country, from 0 on.
    static QStringList countries();

    /// Each stores a change and writes the settings file. The table of band() stays.
    void setCurrent(Region region);
    void setEnable11M(bool enable);
    void setEnable60M(bool enable);

    Region current() const { return m_current; }
    bool enable11M() const { return m_enable11M; }
    bool enable60M() const { return m_enable60M; }

    /// Stores the country only: the region follows at the next start, if the file is saved.
    void setCountry(QLocale::Country country) { m_country = country; }

    void saveSettings();

    /// Takes country and switches from the file; what it lacks gets its default, for the country
    /// the present one.
    void restoreSettings();

private:
    BandInfo info60M() const;

    static std::unique_ptr<AmateurRegion> INSTANCE; // goes with the library that holds it

    QVector<BandInfo> m_table;
    Region m_current = Region2;
    QLocale::Country m_country = QLocale::AnyCountry;
    bool m_enable11M = false;
    bool m_avalible60M = false;
    bool m_enable60M = false;
};
