#include "archive/ArchiveArray.h"
#include "archive/ArchiveDictionary.h"
#include "archive/ArchiveObject.h"
#include "archive/KeyedArchive.h"
#include "fuzz/archive/ArchiveRoundTrip.h"
#include "tests/archive/Refusal.h"

#include <gtest/gtest.h>

#include <random>

namespace kestrel::test {

namespace {

Bytes archiveOfEverything()
{
    auto entry = std::make_shared<ArchiveArray>(ArchiveArray {
        0x100000, 1, QStringLiteral("S⌘"), true, -1, 1.5, QByteArray("\0\1", 2), ArchiveValue() });
    auto table = std::make_shared<ArchiveDictionary>();
    table->set(1, entry);
    table->set(2, entry);
    table->set(QStringLiteral("key"), ~std::uint64_t(0));
    auto object = std::make_shared<ArchiveObject>(
        QStringList { QStringLiteral("Odd"), QStringLiteral("NSObject") });
    object->encodeObject(QStringLiteral("table"), table);
    object->encodeInteger(QStringLiteral("number"), -5);
    object->append({ QStringLiteral("list"), entry, ArchiveObject::Storage::Inline });
    return KeyedArchive::archivedData(object);
}

Bytes xmlArchiveOfEverything()
{
    const std::string xml = xmlArchive("<dict><key>$class</key>" + xmlUid(3)
        + "<key>NS.keys</key>"
          "<array>"
        + xmlUid(2) + "</array><key>NS.objects</key><array>" + xmlUid(4)
        + "</array></dict><string>a&amp;b</string>" + xmlClass("NSDictionary")
        + "<dict><key>$class</key>" + xmlUid(5) + "<key>n</key><real>2.5</real><key>l</key><array>"
        + xmlUid(2) + "</array></dict>" + xmlClass("Odd"));
    return { xml.begin(), xml.end() };
}

// One to four changes: a byte, a bit, a piece copied elsewhere, a piece cut out.
void mutate(Bytes& bytes, std::mt19937& random)
{
    const auto below = [&](std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
    };
    for (std::size_t change = 1 + below(4); change > 0 && bytes.size() > 1; --change) {
        const std::size_t at = below(bytes.size());
        const std::size_t length = std::min(1 + below(16), bytes.size() - at);
        const auto piece = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        const auto pieceEnd = piece + static_cast<std::ptrdiff_t>(length);
        switch (below(4)) {
        case 0:
            *piece = static_cast<std::uint8_t>(below(256));
            break;
        case 1:
            *piece = static_cast<std::uint8_t>(*piece ^ (1u << below(8)));
            break;
        case 2: {
            const Bytes copy(piece, pieceEnd);
            const std::size_t target = below(bytes.size() - length + 1);
            std::copy(
                copy.begin(), copy.end(), bytes.begin() + static_cast<std::ptrdiff_t>(target));
            break;
        }
        default:
            bytes.erase(piece, pieceEnd);
        }
    }
}

void expectSoundMutants(const Bytes& original, unsigned seed)
{
    ASSERT_EQ(refusal(original), std::nullopt);
    std::mt19937 random(seed);
    int accepted = 0;
    for (int i = 0; i < 20'000; ++i) {
        Bytes mutant = original;
        mutate(mutant, random);
        accepted += refusal(mutant) ? 0 : 1;
        ASSERT_EQ(archiveFault(mutant), "") << "mutant " << i;
    }
    EXPECT_GT(accepted, 200); // else nothing was tried but the checks
}

TEST(ArchiveMutation, every_binary_mutant_that_is_accepted_survives_a_round_trip)
{
    expectSoundMutants(archiveOfEverything(), 1);
}

TEST(ArchiveMutation, every_xml_mutant_that_is_accepted_survives_a_round_trip)
{
    expectSoundMutants(xmlArchiveOfEverything(), 2);
}

} // namespace

} // namespace kestrel::test
