#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kestrel::bench {

// One figure of one candidate. The unit is part of the name. No value when the figure is not known.
struct Figure {
    std::string name;
    std::optional<double> value;
    int decimals = 0;
};

struct Row {
    std::string candidate;
    std::vector<Figure> figures; // the same names in every row of a table
};

struct Table {
    std::string title;
    std::vector<Row> rows;
};

// The row of that candidate. Null when the table has none.
[[nodiscard]] const Row* rowOf(const Table& table, const std::string& candidate);
[[nodiscard]] std::optional<double> figureOf(const Row& row, const std::string& name);

// For each of `names`, adds to every row its figure divided by the same figure of the reference
// row.
void addRatios(Table& table, const std::string& reference, const std::vector<std::string>& names);

void print(std::ostream& stream, const Table& table);
// Throws std::runtime_error when the file cannot be written.
void writeJson(const std::filesystem::path& path, const std::vector<Table>& tables);

} // namespace kestrel::bench
