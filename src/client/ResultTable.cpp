#include "client/ResultTable.h"

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <sstream>

#include "logging/Log.h"

namespace {

const char* const unknownName = "<unknown>";

std::string Fixed(double value) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << value;
    return text.str();
}

std::string Number(double value) {
    std::ostringstream text;
    text << std::setprecision(10) << value;
    return text.str();
}

// `text` filled with blanks to `width`, on the right or on the left.
std::string Padded(const std::string& text, size_t width, bool alignLeft) {
    std::string fill(width > text.size() ? width - text.size() : 0, ' ');
    return alignLeft ? text + fill : fill + text;
}

// A CSV field, quoted when it holds a separator, a quote or a line end.
std::string CsvField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

}  // namespace

ResultTable::ResultTable(const e_System_* system) {
    if (system == nullptr) return;
    for (const e_SamplePoint_* point = system->samplePoints; point != nullptr;
         point = point->next) {
        for (const e_ReceivedSignal_* signal = point->signals; signal != nullptr;
             signal = signal->next) {
            rows.push_back({point->name != nullptr ? point->name : unknownName,
                            signal->apName != nullptr ? signal->apName : unknownName,
                            signal->receivedPower_dBm, signal->receivedPathLoss_dB,
                            signal->receivedPathCount});
        }
    }
}

const std::vector<ResultRow>& ResultTable::Rows() const { return rows; }

void ResultTable::PrintText(std::ostream& out) const {
    const std::string headers[] = {"sample point", "access point", "power (dBm)", "path loss (dB)",
                                   "paths"};
    std::vector<std::vector<std::string>> cells;
    for (const ResultRow& row : rows) {
        cells.push_back({row.samplePoint, row.accessPoint, Fixed(row.receivedPower_dBm),
                         Fixed(row.receivedPathLoss_dB), std::to_string(row.receivedPathCount)});
    }
    size_t widths[5];
    for (size_t column = 0; column < 5; ++column) {
        widths[column] = headers[column].size();
        for (const auto& line : cells)
            widths[column] = std::max(widths[column], line[column].size());
    }
    auto printLine = [&](const std::string* line) {
        for (size_t column = 0; column < 5; ++column) {
            if (column > 0) out << "  ";
            // Names stand left, numbers right.
            out << Padded(line[column], widths[column], column < 2);
        }
        out << "\n";
    };
    printLine(headers);
    for (const auto& line : cells) printLine(line.data());
}

void ResultTable::PrintCSV(std::ostream& out) const {
    out << "samplePoint,accessPoint,receivedPower_dBm,receivedPathLoss_dB,receivedPathCount\n";
    for (const ResultRow& row : rows) {
        out << CsvField(row.samplePoint) << "," << CsvField(row.accessPoint) << ","
            << Number(row.receivedPower_dBm) << "," << Number(row.receivedPathLoss_dB) << ","
            << row.receivedPathCount << "\n";
    }
}

bool ResultTable::WriteCSV(const std::string& file) const {
    std::ofstream out(file, std::ios::trunc);
    if (!out) {
        Log::log(1) << "ResultTable::WriteCSV() - cannot write " << file << "\n";
        return false;
    }
    PrintCSV(out);
    out.close();
    return !out.fail();
}
