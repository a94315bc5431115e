// The channel and band entries of the value table, with their centre frequencies in MHz:
// WiFi channels of 2.4 and 5 GHz, then E-UTRA and 5G NR bands as uplink and downlink pairs.
#include <functional>
#include <span>
#include <string>

#include "framework/Parameter.h"

namespace {

// First value number of each run of channels; runs are separated by two unused numbers.
constexpr int kWifi24First = 285;
constexpr int kWifi5First = 301;
constexpr int kEutraFirst = 368;
constexpr int kNrFirst = 424;
constexpr int kNrMmWaveFirst = 506;

// 5 GHz channel numbers in table order.
constexpr int kWifi5Channels[] = {
    7,   8,   9,   11,  12,  16,  32,  34,  36,  38,  40,  42,  44,  46,  48,  50,  52,
    54,  56,  58,  60,  62,  64,  68,  96,  100, 102, 104, 106, 108, 110, 112, 114, 116,
    118, 120, 122, 124, 126, 128, 132, 134, 136, 138, 140, 142, 144, 149, 151, 153, 155,
    157, 159, 161, 165, 169, 173, 183, 184, 185, 187, 188, 189, 192, 196,
};

// A band with its uplink and downlink centre frequency; TDD bands have one frequency for
// both, a supplementary band 0 on its missing side.
struct Band {
    const char* duplex;
    const char* band;
    double uplink;
    double downlink;
};

constexpr Band kEutraBands[] = {
    {"FDD", "1", 1950, 2140},      {"FDD", "2", 1880, 1960},      {"FDD", "3", 1747.5, 1842.5},
    {"FDD", "4", 1732.5, 2132.5},  {"FDD", "5", 836.5, 881.5},    {"FDD", "6", 835, 880},
    {"FDD", "7", 2535, 2655},      {"FDD", "8", 897.5, 942.5},    {"FDD", "9", 1767.4, 1862.4},
    {"FDD", "10", 1740, 2140},     {"FDD", "11", 1437.9, 1485.9}, {"FDD", "12", 707, 737},
    {"FDD", "13", 782, 751},       {"FDD", "14", 793, 763},       {"FDD", "17", 710, 740},
    {"FDD", "18", 822.5, 867.5},   {"FDD", "19", 837.5, 882.5},   {"FDD", "20", 847, 806},
    {"FDD", "21", 1455.4, 1503.4}, {"TDD", "33", 1910, 1910},     {"TDD", "34", 2017.5, 2017.5},
    {"TDD", "35", 1880, 1880},     {"TDD", "36", 1960, 1960},     {"TDD", "37", 1920, 1920},
    {"TDD", "38", 2595, 2595},     {"TDD", "39", 1900, 1900},     {"TDD", "40", 2350, 2350},
};

constexpr Band kNrBands[] = {
    {"FDD", "n1", 1950, 2140},      {"FDD", "n2", 1880, 1960},      {"FDD", "n3", 1747.5, 1842.5},
    {"FDD", "n5", 836.5, 881.5},    {"FDD", "n7", 2535, 2655},      {"FDD", "n8", 897.5, 942.5},
    {"FDD", "n12", 707.5, 737.5},   {"FDD", "n14", 793, 763},       {"FDD", "n18", 822.5, 867.5},
    {"FDD", "n20", 847, 806},       {"FDD", "n25", 1882.5, 1962.5}, {"FDD", "n28", 725.5, 780.5},
    {"SDL", "n29", 0, 722.5},       {"FDD", "n30", 2310, 2355},     {"TDD", "n34", 2017.5, 2017.5},
    {"TDD", "n38", 2595, 2595},     {"TDD", "n39", 1900, 1900},     {"TDD", "n40", 2350, 2350},
    {"TDD", "n41", 2593, 2593},     {"TDD", "n48", 3625, 3625},     {"TDD", "n50", 1474.5, 1474.5},
    {"TDD", "n51", 1429.5, 1429.5}, {"FDD", "n65", 1965, 2155},     {"FDD", "n66", 1745, 2155},
    {"FDD", "n70", 1702.5, 2007.5}, {"FDD", "n71", 680.5, 634.5},   {"FDD", "n74", 1448.5, 1496.5},
    {"SDL", "n75", 0, 1474.5},      {"SDL", "n76", 0, 1429.5},      {"TDD", "n77", 3750, 3750},
    {"TDD", "n78", 3550, 3550},     {"TDD", "n79", 4700, 4700},     {"SUL", "n80", 1747.5, 0},
    {"SUL", "n81", 897.5, 0},       {"SUL", "n82", 847, 0},         {"SUL", "n83", 725.5, 0},
    {"SUL", "n84", 1950, 0},        {"SUL", "n86", 1745, 0},        {"SUL", "n89", 836.5, 0},
    {"TDD", "n90", 2593, 2593},
};

constexpr Band kNrMmWaveBands[] = {
    {"TDD", "n257", 28000, 28000},
    {"TDD", "n258", 25875, 25875},
    {"TDD", "n260", 38500, 38500},
    {"TDD", "n261", 27925, 27925},
};

using ChannelVisitor = std::function<void(eParamValue, const std::string&, double)>;

void Visit(const ChannelVisitor& visit, int key, const std::string& text, double mhz) {
    visit(static_cast<eParamValue>(key), text, mhz);
}

std::string EutraHead(const Band& band) {
    return std::string("E-UTRA ") + band.duplex + " " + band.band;
}

std::string NrHead(const Band& band) {
    return std::string("5GNR ") + band.band + " " + band.duplex;
}

// The uplink and then the downlink entry of each band, from key on.
void VisitBands(const ChannelVisitor& visit, int key, std::span<const Band> bands,
                std::string (*head)(const Band&), const char* uplink, const char* downlink) {
    for (const Band& band : bands) {
        Visit(visit, key++, head(band) + uplink, band.uplink);
        Visit(visit, key++, head(band) + downlink, band.downlink);
    }
}

}  // namespace

void Parameter::ForEachChannel(const ChannelVisitor& visit) {
    for (int channel = 1; channel <= 14; ++channel) {
        const double mhz = channel == 14 ? 2484 : 2407 + 5 * channel;
        Visit(visit, kWifi24First + channel - 1, std::to_string(channel), mhz);
    }
    int key = kWifi5First;
    for (int channel : kWifi5Channels) {
        Visit(visit, key++, std::to_string(channel), 5000 + 5 * channel);
    }
    VisitBands(visit, kEutraFirst, kEutraBands, EutraHead, " uplink", " downlink");
    VisitBands(visit, kNrFirst, kNrBands, NrHead, " UL", " DL");
    VisitBands(visit, kNrMmWaveFirst, kNrMmWaveBands, NrHead, " UL", " DL");
}

void Parameter::LoadChannelFreqMap() {
    ForEachChannel(
        [](eParamValue channel, const std::string&, double mhz) { channelFreqMap[channel] = mhz; });
}
