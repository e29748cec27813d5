// SPDX-License-Identifier: GPL-3.0-or-later
#include "report/ToolReport.h"

#include "DspCore/audio/CtcssTones.h"

#include <QJsonArray>

#include <cmath>

namespace host
{
namespace
{
/// Collects what differs from the default.
class Differences
{
public:
    template <typename Value>
    void add(const char *name, const Value &value, const Value &standard)
    {
        if (value != standard)
            m_json[name] = value;
    }

    template <typename Value>
    void add(const char *name, const std::optional<Value> &value)
    {
        if (value)
            m_json[name] = *value;
    }

    void add(const char *name, const QJsonValue &value) { m_json[name] = value; }

    QJsonObject json() const { return m_json; }

private:
    QJsonObject m_json;
};

QJsonObject toJson(const PredictorSettings &settings)
{
    Differences found;
    found.add("taps", settings.taps);
    found.add("delay", settings.delay);
    found.add("rate", settings.rate);
    found.add("leak", settings.leak);
    return found.json();
}

QJsonArray toJson(const QVector<int> &values)
{
    QJsonArray array;
    for (const int value : values)
        array += value;
    return array;
}

double ctcssHz(int index)
{
    return std::round(double(Velmora::CTCSS.at(std::size_t(index))) * 10.0) / 10.0;
}
} // namespace

QJsonObject toJson(const ToolSettings &settings)
{
    const ToolSettings standard;
    Differences found;
    if (settings.agcMode != standard.agcMode)
        found.add("agc", QJsonValue(kAgcModeNames.at(std::size_t(settings.agcMode))));
    found.add("agc_gain_db", settings.agcGainDb);
    found.add("agc_attack_ms", settings.agcAttackMs);
    found.add("agc_decay_ms", settings.agcDecayMs);
    found.add("agc_hang_ms", settings.agcHangMs);
    found.add("nb1", settings.nb1, standard.nb1);
    found.add("nb1_threshold", settings.nb1Threshold);
    found.add("nb2", settings.nb2, standard.nb2);
    found.add("nb2_threshold", settings.nb2Threshold);
    if (settings.nr.on)
        found.add("nr", QJsonValue(toJson(settings.nr)));
    if (settings.anf.on)
        found.add("anf", QJsonValue(toJson(settings.anf)));
    found.add("apf", settings.apf, standard.apf);
    found.add("dse", settings.dse, standard.dse);
    found.add("binaural", settings.binaural, standard.binaural);
    if (!settings.equalizerDb.isEmpty())
        found.add("equalizer_db", QJsonValue(toJson(settings.equalizerDb)));
    found.add("squelch_dbm", settings.squelchDbm);
    if (settings.ctcssIndex)
        found.add("ctcss_hz", QJsonValue(ctcssHz(*settings.ctcssIndex)));
    found.add("tune_b_hz", settings.tuneBHz);
    found.add("volume_db", settings.volumeDb, standard.volumeDb);
    found.add("volume_b_db", settings.volumeBDb, standard.volumeBDb);
    found.add("balance_db", settings.balanceDb, standard.balanceDb);
    found.add("cw_tone_hz", settings.cwToneHz);
    found.add("mono", settings.mono, standard.mono);
    return found.json();
}
} // namespace host
