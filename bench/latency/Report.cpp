#include "bench/latency/Report.h"

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <stdexcept>

namespace kestrel::bench {

namespace {
std::string text(const Figure& figure)
{
    if (!figure.value)
        return "-";
    std::ostringstream stream;
    stream << std::fixed << std::setprecision(figure.decimals) << *figure.value;
    return stream.str();
}

std::string quoted(const std::string& name)
{
    std::string result = "\"";
    for (const char c : name) {
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + '"';
}

void writeRow(std::ostream& stream, const Row& row)
{
    stream << "    { \"candidate\": " << quoted(row.candidate);
    for (const auto& figure : row.figures)
        stream << ", " << quoted(figure.name) << ": " << (figure.value ? text(figure) : "null");
    stream << " }";
}
} // namespace

const Row* rowOf(const Table& table, const std::string& candidate)
{
    const auto row = std::find_if(table.rows.begin(), table.rows.end(),
        [&](const Row& each) { return each.candidate == candidate; });
    return row == table.rows.end() ? nullptr : &*row;
}

std::optional<double> figureOf(const Row& row, const std::string& name)
{
    const auto figure = std::find_if(row.figures.begin(), row.figures.end(),
        [&](const Figure& each) { return each.name == name; });
    return figure == row.figures.end() ? std::nullopt : figure->value;
}

void addRatios(Table& table, const std::string& reference, const std::vector<std::string>& names)
{
    const Row* found = rowOf(table, reference);
    const Row divisors = found ? *found : Row {};
    for (auto& row : table.rows) {
        for (const auto& name : names) {
            const auto value = figureOf(row, name);
            const auto divisor = figureOf(divisors, name);
            Figure ratio { name.substr(0, name.find(' ')) + " ratio", {}, 2 };
            if (value && divisor && *divisor > 0)
                ratio.value = *value / *divisor;
            row.figures.push_back(ratio);
        }
    }
}

void print(std::ostream& stream, const Table& table)
{
    stream << '\n' << table.title << '\n';
    if (table.rows.empty())
        return;
    std::size_t nameWidth = 9;
    for (const auto& row : table.rows)
        nameWidth = std::max(nameWidth, row.candidate.size());
    const auto& first = table.rows.front().figures;
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < first.size(); ++i) {
        widths.push_back(first[i].name.size());
        for (const auto& row : table.rows)
            widths[i] = std::max(widths[i], text(row.figures[i]).size());
    }
    const auto cell = [&](std::size_t i, const std::string& content) {
        stream << "  " << std::right << std::setw(static_cast<int>(widths[i])) << content;
    };
    stream << std::left << std::setw(static_cast<int>(nameWidth)) << "candidate";
    for (std::size_t i = 0; i < first.size(); ++i)
        cell(i, first[i].name);
    for (const auto& row : table.rows) {
        stream << '\n' << std::left << std::setw(static_cast<int>(nameWidth)) << row.candidate;
        for (std::size_t i = 0; i < row.figures.size(); ++i)
            cell(i, text(row.figures[i]));
    }
    stream << std::endl;
}

void writeJson(const std::filesystem::path& path, const std::vector<Table>& tables)
{
    std::ofstream stream(path);
    stream << "[";
    for (std::size_t i = 0; i < tables.size(); ++i) {
        stream << (i == 0 ? "\n" : ",\n") << "  { \"title\": " << quoted(tables[i].title)
               << ", \"rows\": [\n";
        for (std::size_t k = 0; k < tables[i].rows.size(); ++k) {
            writeRow(stream, tables[i].rows[k]);
            stream << (k + 1 == tables[i].rows.size() ? "\n" : ",\n");
        }
        stream << "  ] }";
    }
    stream << "\n]\n";
    if (!stream.flush())
        throw std::runtime_error("cannot write " + path.string());
}

} // namespace kestrel::bench
