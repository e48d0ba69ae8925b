#pragma once

#include "archive/ArchiveDictionary.h"
#include "sets/SetText.h"

#include <random>
#include <vector>

namespace kestrel::test {

// Makes sets: most of them such as Kestrel writes, many with something odd, some with nothing else.
// The same seed makes the same sets.
class RandomSet {
public:
    // With unpaired surrogates, which a set in memory can have and an archive cannot.
    enum class Strings { AsInArchives, WithUnpairedSurrogates };

    explicit RandomSet(unsigned int seed, Strings strings);

    [[nodiscard]] SetText::Root next();

private:
    using Table = std::shared_ptr<ArchiveDictionary>;

    int below(int end) { return static_cast<int>(m_random() % static_cast<unsigned int>(end)); }
    bool oneIn(int count) { return below(count) == 0; }

    QString string();
    double real();
    ArchiveValue scalar();
    ArchiveValue value(int depth);
    ArchiveValue container(int depth);
    ArchiveValue key(int number);
    ArchiveValue entry();
    ArchiveValue title();
    std::vector<ArchiveValue> keys();
    ArchiveValue table(const std::vector<ArchiveValue>& keys, ArchiveValue (RandomSet::*content)());

    std::mt19937 m_random;
    Strings m_strings;
    int m_oddity = 0; // one value in so many is odd; 0 for none
    std::vector<ArchiveValue> m_containers; // of the present set, to be held once more
};

} // namespace kestrel::test
