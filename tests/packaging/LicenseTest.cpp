#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

QString textOf(const char* path)
{
    QFile file(QStringLiteral(KESTREL_SOURCE "/") + QLatin1String(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return QString::fromUtf8(file.readAll());
}

// Without line breaks and indentation.
QString flowing(const QString& text)
{
    return text.simplified();
}

// Kept in the package of Debian as a fact of its own, in the form that Debian wants.
TEST(License, is_the_same_in_the_tree_and_in_the_debian_package)
{
    const QString license = flowing(textOf("LICENSE"));
    EXPECT_TRUE(license.startsWith(QStringLiteral(KESTREL_COPYRIGHT ". All rights reserved. ")))
        << license.toStdString();

    const QString debian = textOf("packaging/linux/copyright");
    const QString holder = QStringLiteral(KESTREL_COPYRIGHT).remove(QStringLiteral("Copyright © "));
    EXPECT_TRUE(debian.contains("Copyright: " + holder + '\n')) << debian.toStdString();
    const QString terms
        = flowing(debian.section(QStringLiteral("License: all-rights-reserved\n"), 1));
    EXPECT_FALSE(terms.isEmpty());
    EXPECT_TRUE(license.contains(terms)) << terms.toStdString();
}

TEST(License, the_table_of_tools_names_every_package_that_is_installed_for_the_build)
{
    const QString thirdParty = textOf("THIRD-PARTY.md");
    const QString script = textOf("scripts/install-deps");
    const QRegularExpression list(
        QStringLiteral("^[a-z]+=\\(([^)$]+)\\)"), QRegularExpression::MultilineOption);
    int packages = 0;
    for (auto lists = list.globalMatch(script); lists.hasNext();) {
        for (const QString& package : flowing(lists.next().captured(1)).split(' ')) {
            ++packages;
            EXPECT_TRUE(thirdParty.contains('`' + package + '`')) << package.toStdString();
        }
    }
    EXPECT_GT(packages, 30);
}

} // namespace
} // namespace kestrel::test
