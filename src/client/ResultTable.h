#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "system/SystemRecords.h"

// One access point's signal at one sample point.
struct ResultRow {
    std::string samplePoint;
    std::string accessPoint;
    double receivedPower_dBm = 0;
    double receivedPathLoss_dB = 0;
    int receivedPathCount = 0;
};

// The received signals of a returned system, one row per sample point and access point,
// as an aligned text table or as CSV. Sample points without signals give no row.
class ResultTable {
  public:
    explicit ResultTable(const e_System_* system);

    const std::vector<ResultRow>& Rows() const;
    void PrintText(std::ostream& out) const;
    void PrintCSV(std::ostream& out) const;
    bool WriteCSV(const std::string& file) const;

  private:
    std::vector<ResultRow> rows;
};
