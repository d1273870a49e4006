#include "tests/architecture/IncludeCycles.h"
#include "tests/architecture/IncludeRules.h"

#include <QDirIterator>
#include <QtTest>

/// Who includes whom: the arrows between the folders never run up, and no way leads round.
class TestIncludeArrows : public QObject
{
    Q_OBJECT

private slots:
    void includesAreJudged_data();
    void includesAreJudged();
    void includesAreFoundInText();
    void theTableIsRead();
    void waysRoundAreFound_data();
    void waysRoundAreFound();
    void everyFolderIsInTheTable();
    void everySourceKeepsToTheTable();
    void noTwoFilesIncludeEachOther();
};

namespace {

/// What the text includes, in its order.
QStringList includesOf(const QString& text)
{
    static const QRegularExpression line("^\\s*#\\s*include\\s*[<\"]([^>\"]+)[>\"]",
                                         QRegularExpression::MultilineOption);
    QStringList found;
    for (auto match = line.globalMatch(text); match.hasNext();)
        found.append(match.next().captured(1));
    return found;
}

const IncludeRules& rules()
{
    static const IncludeRules read(textOf(QDir(SOURCE_ROOT).filePath("docs/architecture.md")));
    return read;
}

/// What each file of the project's folders includes.
Includes includesOfTheProject()
{
    const QDir root(SOURCE_ROOT);
    Includes found;
    for (const QString& folder : rules().rootFolders()) {
        QDirIterator files(root.filePath(folder), {"*.h", "*.cpp"}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            found[root.relativeFilePath(path)] = includesOf(textOf(path));
        }
    }
    return found;
}

} // namespace

void TestIncludeArrows::includesAreJudged_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("include");
    QTest::addColumn<bool>("allowed");
    const auto good = [](const char* file, const char* include) {
        QTest::addRow("%s may include %s", file, include) << file << include << true;
    };
    const auto bad = [](const char* file, const char* include) {
        QTest::addRow("%s must not include %s", file, include) << file << include << false;
    };
    good("image/A.cpp", "image/B.h");
    good("image/A.cpp", "cstdint");
    bad("image/A.cpp", "engine/B.h");
    bad("image/A.cpp", "image/unpack/B.h");
    good("image/unpack/A.cpp", "image/B.h");
    bad("dialog/A.cpp", "image/unpack/B.h");
    good("platform/converter/A.cpp", "image/unpack/B.h");
    bad("image/A.cpp", "QString");
    bad("image/A.cpp", "QtCore/QString");
    bad("image/A.cpp", "qglobal.h");
    good("splitter/A.cpp", "QWidget");
    bad("splitter/A.cpp", "image/B.h");
    good("engine/A.cpp", "engine/pix/B.h");
    good("engine/pix/A.cpp", "engine/B.h");
    bad("engine/A.cpp", "engine/stages/B.h");
    bad("engine/A.cpp", "dialog/B.h");
    bad("engine/pix/A.cpp", "QVector");
    bad("engine/A.cpp", "qwt_plot.h");
    good("engine/stages/A.cpp", "dialog/B.h");
    good("engine/stages/A.cpp", "engine/B.h");
    good("engine/stages/A.cpp", "engine/stages/B.h");
    good("engine/stages/A.cpp", "QCheckBox");
    bad("engine/stages/A.cpp", "display/B.h");
    bad("engine/stages/A.cpp", "plugin/ZBKInterfacePlugIn.h");
    good("display/A.cpp", "image/B.h");
    good("display/A.cpp", "A.moc");
    bad("display/A.cpp", "dialog/B.h");
    bad("display/A.cpp", "engine/B.h");
    bad("display/A.cpp", "platform/viewer/B.h");
    good("dialog/A.cpp", "display/B.h");
    good("dialog/A.cpp", "splitter/B.h");
    good("dialog/A.cpp", "engine/pix/B.h");
    good("dialog/A.cpp", "image/B.h");
    good("dialog/A.cpp", "plugin/ZBKInterfacePlugIn.h");
    bad("dialog/A.cpp", "plugin/ZorFFCUtility.h");
    bad("dialog/A.cpp", "engine/stages/B.h");
    bad("dialog/A.cpp", "platform/converter/B.h");
    bad("dialog/A.cpp", "host/frames/Frame.h");
    bad("dialog/A.cpp", "../engine/B.h");
    bad("dialog/A.cpp", "tests/support/B.h");
    good("plugin/A.cpp", "dialog/B.h");
    bad("plugin/A.cpp", "engine/B.h");
    bad("plugin/A.cpp", "host/quality/B.h");
    good("platform/converter/A.cpp", "image/B.h");
    good("platform/converter/A.cpp", "platform/records/B.h");
    good("platform/imageapi/A.cpp", "platform/Export.h");
    bad("platform/converter/A.cpp", "platform/imageapi/B.h");
    bad("platform/imageapi/A.cpp", "engine/B.h");
    good("platform/viewer/A.cpp", "image/B.h");
    good("platform/viewer/A.cpp", "display/ZorDisplayProcessor.h");
    bad("platform/viewer/A.cpp", "display/DisplayAdapterQT.h");
    bad("platform/viewer/A.cpp", "platform/converter/B.h");
    bad("platform/records/A.cpp", "platform/converter/B.h");
    good("host/frames/A.cpp", "image/B.h");
    good("host/quality/A.cpp", "engine/B.h");
    bad("host/frames/A.cpp", "dialog/B.h");
    bad("host/frames/A.cpp", "host/zorffc/B.h");
    bad("host/quality/A.cpp", "engine/stages/B.h");
    good("host/quality/A.cpp", "image/unpack/B.h");
    bad("host/quality/A.cpp", "host/frames/B.h");
    good("host/average/A.cpp", "host/frames/B.h");
    bad("host/average/A.cpp", "host/quality/B.h");
    bad("host/average/A.cpp", "host/source/B.h");
    bad("host/average/A.cpp", "QString");
    bad("host/average/A.cpp", "host/zorbench/B.h");
    good("host/source/A.cpp", "host/frames/B.h");
    good("host/source/A.cpp", "host/simulate/B.h");
    bad("host/source/A.cpp", "host/quality/B.h");
    bad("host/source/A.cpp", "QObject");
    bad("host/frames/A.cpp", "host/source/B.h");
    good("host/zorffc/A.cpp", "host/frames/B.h");
    good("host/zorffc/A.cpp", "CLI/CLI.hpp");
    bad("host/zorffc/A.cpp", "dialog/B.h");
    bad("host/zorffc/A.cpp", "platform/converter/B.h");
    good("host/zorbench/A.cpp", "display/DisplayView.h");
    good("host/zorbench/A.cpp", "plugin/ZBKInterfacePlugIn.h");
    bad("host/zorbench/A.cpp", "plugin/ZorFFCUtility.h");
    bad("host/zorbench/A.cpp", "dialog/B.h");
    bad("host/zorbench/A.cpp", "engine/B.h");
    bad("host/zorbench/A.cpp", "host/zorffc/B.h");
    bad("host/zorbench/A.cpp", "platform/viewer/B.h");
    bad("attic/A.cpp", "cstdint");
    bad("dialog/A.cpp", "image/../plugin/B.h");
}

void TestIncludeArrows::includesAreJudged()
{
    QFETCH(QString, file);
    QFETCH(QString, include);
    QFETCH(bool, allowed);
    const QString wrong = rules().whatIsWrongWith(file, include);
    QVERIFY2(wrong.isEmpty() == allowed, qPrintable("got '" + wrong + "'"));
}

void TestIncludeArrows::includesAreFoundInText()
{
    const QString text =
        "#pragma once\n#include \"image/A.h\"\n  #  include <QString>\n// #include \"no/B.h\"\n"
        "#include\t\"engine/C.h\" // why\nint include;\n";
    QCOMPARE(includesOf(text), (QStringList{"image/A.h", "QString", "engine/C.h"}));
}

void TestIncludeArrows::theTableIsRead()
{
    const IncludeRules read(
        "| folder | x |\n\n| a | b |\n| folder | what | may include | Qt |\n|---|---|---|---|\n"
        "| `a/` | `no/` | `b/`, `c/D.h` | yes |\n| `b/` | | nothing | no |\n\n| `e/` | | | no |\n");
    QCOMPARE(read.folders(), QStringList());
    const IncludeRules table(
        "text\n| folder | what | may include | Qt |\n|---|---|---|---|\n"
        "| `a/` | `no/` | `b/`, `c/D.h` | yes |\n| `b/` | | nothing | no |\n| `a/f/` | | nothing | no |\n\n"
        "| `e/` | | | no |\n");
    QCOMPARE(table.folders(), (QStringList{"a/", "b/", "a/f/"}));
    QCOMPARE(table.rootFolders(), (QStringList{"a", "b"}));
    QVERIFY(table.whatIsWrongWith("a/A.cpp", "b/B.h").isEmpty());
    QVERIFY(table.whatIsWrongWith("a/A.cpp", "QString").isEmpty());
    QVERIFY(!table.whatIsWrongWith("b/B.cpp", "a/A.h").isEmpty());
    QVERIFY(!table.whatIsWrongWith("b/B.cpp", "QString").isEmpty());
}

void TestIncludeArrows::waysRoundAreFound_data()
{
    QTest::addColumn<Includes>("includes");
    QTest::addColumn<QStringList>("cycles");
    QTest::newRow("none in a chain") << Includes{{"a", {"b"}}, {"b", {"c"}}, {"c", {}}} << QStringList();
    QTest::newRow("none where two ways lead to one")
        << Includes{{"a", {"b", "c"}}, {"b", {"d"}}, {"c", {"d"}}, {"d", {}}} << QStringList();
    QTest::newRow("two") << Includes{{"a", {"b"}}, {"b", {"a"}}} << QStringList{"a b"};
    QTest::newRow("three, and one that only leads in")
        << Includes{{"a", {"b"}}, {"b", {"c"}}, {"c", {"d"}}, {"d", {"b"}}} << QStringList{"b c d"};
    QTest::newRow("two groups") << Includes{{"a", {"b"}}, {"b", {"a", "c"}}, {"c", {"d"}}, {"d", {"c"}}}
                                << QStringList{"a b", "c d"};
}

void TestIncludeArrows::waysRoundAreFound()
{
    QFETCH(Includes, includes);
    QTEST(cyclesOf(includes), "cycles");
}

/// But those beside the product: its tests, what measures it, what is built from it.
void TestIncludeArrows::everyFolderIsInTheTable()
{
    static const QRegularExpression beside("^(tests|bench|out|build.*)$");
    const QDir root(SOURCE_ROOT);
    const QStringList folders = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& folder : folders) {
        QDirIterator sources(root.filePath(folder), {"*.h", "*.cpp"}, QDir::Files,
                             QDirIterator::Subdirectories);
        if (sources.hasNext() && !beside.match(folder).hasMatch())
            QVERIFY2(rules().rootFolders().contains(folder), qPrintable(folder + "/ is not in the table"));
    }
}

void TestIncludeArrows::everySourceKeepsToTheTable()
{
    QStringList wrong;
    QSet<QString> seen;
    const Includes all = includesOfTheProject();
    for (auto file = all.cbegin(); file != all.cend(); ++file) {
        seen.insert(rules().folderOf(file.key()));
        for (const QString& include : file.value()) {
            const QString what = rules().whatIsWrongWith(file.key(), include);
            if (!what.isEmpty())
                wrong.append(file.key() + ": " + what);
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable('\n' + wrong.join('\n')));
    for (const QString& folder : rules().folders())
        QVERIFY2(seen.contains(folder), qPrintable("the table has " + folder + ", which has no sources"));
    QVERIFY(seen.contains("engine/stages/"));
}

void TestIncludeArrows::noTwoFilesIncludeEachOther()
{
    Includes units;
    const Includes all = includesOfTheProject();
    for (auto file = all.cbegin(); file != all.cend(); ++file) {
        const QString unit = unitOf(file.key());
        for (const QString& include : file.value()) {
            if (unitOf(include) != unit && all.contains(include))
                units[unit].append(unitOf(include));
        }
    }
    QVERIFY(units.size() > 100);
    const QStringList cycles = cyclesOf(units);
    QVERIFY2(cycles.isEmpty(), qPrintable('\n' + cycles.join('\n')));
}

QTEST_APPLESS_MAIN(TestIncludeArrows)
#include "tst_include_arrows.moc"
