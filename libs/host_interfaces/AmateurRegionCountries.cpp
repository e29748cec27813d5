// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/AmateurRegion.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace
{
using Region = AmateurRegion::Region;
using C = QLocale::Country;

/// Countries whose rules give the 60 m band the same edges.
struct Limits60M
{
    quint64 low;  // Hz
    quint64 high; // Hz
    std::initializer_list<C> countries;
};

constexpr Limits60M kLimits60M[] = {
    {5351500, 5366500,
        {C::Andorra, C::Argentina, C::Belarus, C::Belgium, C::Belize, C::BosniaAndHerzegowina,
            C::Brazil, C::China, C::Croatia, C::Cyprus, C::CzechRepublic, C::Ecuador, C::Finland,
            C::France, C::Germany, C::Greece, C::HongKong, C::Hungary, C::Iceland, C::India,
            C::Indonesia, C::Italy, C::Jamaica, C::Kazakhstan, C::Kuwait, C::Latvia,
            C::Liechtenstein, C::Lithuania, C::Luxembourg, C::Malta, C::Mexico, C::Namibia,
            C::Netherlands, C::Niger, C::Panama, C::Paraguay, C::Philippines, C::Poland,
            C::Slovakia, C::Slovenia, C::Spain, C::Sweden, C::Switzerland, C::Turkey,
            C::UnitedArabEmirates, C::Uruguay, C::Montenegro}},
    {5250000, 5450000,
        {C::Denmark, C::FaroeIslands, C::Greenland, C::Grenada, C::Macedonia, C::Samoa,
            C::UnitedKingdom}},
    {5250000, 5400000, {C::Barbados, C::Bulgaria, C::TrinidadAndTobago}},
    {5332000, 5405000, {C::Canada, C::Honduras}},
    {5357500, 5363500, {C::Bahrain}},
    {5250000, 5310000, {C::Bangladesh}},
    {5418000, 5430000, {C::Cuba}},
    {5258500, 5403500, {C::Dominica}},
    {5370000, 5450000, {C::Estonia}},
    {5351500, 5405000, {C::Ireland}},
    {5298500, 5403500, {C::Israel}},
    {5275000, 5450000, {C::Kenya}},
    {5353000, 5366000, {C::NewZealand}},
    {5260000, 5410000, {C::Norway}},
    {5319000, 5349000, {C::Oman}},
    {5351500, 5403500, {C::Portugal}},
    {5363500, 5366500, {C::Romania}},
    {5290000, 5450000, {C::SouthAfrica}},
    {5330500, 5403500, {C::UnitedStates}},
};

// All other entries are of region 1.
constexpr C kRegion2[] = {C::AmericanSamoa, C::Anguilla, C::Antarctica, C::AntiguaAndBarbuda,
    C::Argentina, C::Aruba, C::Bahamas, C::Barbados, C::Belize, C::Bermuda, C::Bolivia,
    C::BouvetIsland, C::Brazil, C::BritishIndianOceanTerritory, C::Canada, C::CaymanIslands,
    C::Chile, C::ChristmasIsland, C::CocosIslands, C::Colombia, C::CongoBrazzaville, C::CookIslands,
    C::CostaRica, C::IvoryCoast, C::Cuba, C::Dominica, C::DominicanRepublic, C::EastTimor,
    C::Ecuador, C::ElSalvador, C::FalklandIslands, C::FaroeIslands, C::Guernsey, C::FrenchGuiana,
    C::FrenchPolynesia, C::FrenchSouthernTerritories, C::Gibraltar, C::Greenland, C::Grenada,
    C::Guadeloupe, C::Guam, C::Guatemala, C::GuineaBissau, C::Guyana, C::Haiti,
    C::HeardAndMcDonaldIslands, C::Honduras, C::HongKong, C::Jamaica, C::Kyrgyzstan, C::Laos,
    C::Macau, C::Macedonia, C::Martinique, C::Mayotte, C::Mexico, C::Mongolia, C::Montserrat,
    C::CuraSao, C::NewCaledonia, C::Nicaragua, C::Niue, C::NorfolkIsland, C::NorthernMarianaIslands,
    C::Palau, C::Panama, C::Paraguay, C::Peru, C::Pitcairn, C::PuertoRico, C::Reunion,
    C::SaintKittsAndNevis, C::SaintLucia, C::SaintVincentAndTheGrenadines, C::Somalia,
    C::SouthGeorgiaAndTheSouthSandwichIslands, C::SaintHelena, C::SaintPierreAndMiquelon,
    C::Suriname, C::SvalbardAndJanMayenIslands, C::Swaziland, C::Taiwan, C::Tajikistan,
    C::TokelauCountry, C::TrinidadAndTobago, C::Turkmenistan, C::TurksAndCaicosIslands,
    C::UnitedStates, C::UnitedStatesMinorOutlyingIslands, C::Uruguay, C::Uzbekistan, C::Venezuela,
    C::BritishVirginIslands, C::UnitedStatesVirginIslands, C::WallisAndFutunaIslands,
    C::WesternSahara, C::CanaryIslands, C::ClippertonIsland, C::SaintBarthelemy, C::SaintMartin,
    C::LatinAmerica, C::AscensionIsland, C::AlandIslands, C::DiegoGarcia, C::CeutaAndMelilla,
    C::IsleOfMan, C::Jersey, C::TristanDaCunha};

constexpr C kRegion3[] = {C::Afghanistan, C::Australia, C::Bangladesh, C::Bhutan, C::Brunei,
    C::Cambodia, C::China, C::Fiji, C::India, C::Indonesia, C::Iran, C::Japan, C::Kiribati,
    C::NorthKorea, C::SouthKorea, C::Malaysia, C::Maldives, C::MarshallIslands, C::Micronesia,
    C::Myanmar, C::NauruCountry, C::Nepal, C::NewZealand, C::Pakistan, C::PapuaNewGuinea,
    C::Philippines, C::Samoa, C::Singapore, C::SolomonIslands, C::SriLanka, C::Thailand, C::Tonga,
    C::TuvaluCountry, C::Vanuatu, C::Vietnam};

// By country, the first entry for country 1.
constexpr auto kRegions = [] {
    std::array<Region, C::SouthSudan> regions{};
    for (C country : kRegion2)
        regions[country - 1] = Region::Region2;
    for (C country : kRegion3)
        regions[country - 1] = Region::Region3;
    return regions;
}();
static_assert(kRegions.size() == 254);
} // namespace

AmateurRegion::Region AmateurRegion::defaultRegion(QLocale::Country country) const
{
    const auto number = static_cast<unsigned int>(country);
    return number >= 1 && number <= kRegions.size() ? kRegions[number - 1] : Region2;
}

std::tuple<bool, quint64, quint64> AmateurRegion::limits60M(QLocale::Country country) const
{
    for (const Limits60M &limits : kLimits60M) {
        const auto &countries = limits.countries;
        if (std::find(countries.begin(), countries.end(), country) != countries.end())
            return {true, limits.low, limits.high};
    }
    return {false, 0, 0};
}
