#include "architecture/IncludeRules.h"

#include <QDirIterator>
#include <QtTest>

/// Who includes whom: the arrows between the folders never run up.
class TestIncludeArrows : public QObject
{
    Q_OBJECT

private slots:
    void includesAreJudged_data();
    void includesAreJudged();
    void includesAreFoundInText();
    void everySourceKeepsToTheTable();
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
    good("host/zorffc/A.cpp", "host/frames/B.h");
    good("host/zorffc/A.cpp", "CLI/CLI.hpp");
    bad("host/zorffc/A.cpp", "dialog/B.h");
    bad("host/zorffc/A.cpp", "platform/converter/B.h");
    good("host/zorbench/A.cpp", "plugin/ZBKInterfacePlugIn.h");
    good("host/zorbench/A.cpp", "display/B.h");
    bad("host/zorbench/A.cpp", "plugin/ZorFFCUtility.h");
    bad("host/zorbench/A.cpp", "engine/B.h");
    bad("attic/A.cpp", "cstdint");
    bad("dialog/A.cpp", "image/../plugin/B.h");
}

void TestIncludeArrows::includesAreJudged()
{
    QFETCH(QString, file);
    QFETCH(QString, include);
    QFETCH(bool, allowed);
    const QString wrong = whatIsWrongWith(file, include);
    QVERIFY2(wrong.isEmpty() == allowed, qPrintable("got '" + wrong + "'"));
}

void TestIncludeArrows::includesAreFoundInText()
{
    const QString text =
        "#pragma once\n#include \"image/A.h\"\n  #  include <QString>\n// #include \"no/B.h\"\n"
        "#include\t\"engine/C.h\" // why\nint include;\n";
    QCOMPARE(includesOf(text), (QStringList{"image/A.h", "QString", "engine/C.h"}));
}

void TestIncludeArrows::everySourceKeepsToTheTable()
{
    const QDir root(SOURCE_ROOT);
    QStringList wrong;
    QSet<QString> roomsSeen;
    for (const QString folder :
         {"image", "splitter", "engine", "display", "dialog", "plugin", "platform", "host"}) {
        QDirIterator files(root.filePath(folder), {"*.h", "*.cpp"}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString path = root.relativeFilePath(file.fileName());
            roomsSeen.insert(roomOf(path));
            for (const QString& include : includesOf(QString::fromUtf8(file.readAll()))) {
                const QString what = whatIsWrongWith(path, include);
                if (!what.isEmpty())
                    wrong.append(path + ": " + what);
            }
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable('\n' + wrong.join('\n')));
    for (const QString room :
         {"image", "engine", "engine/stages", "dialog", "platform/converter", "host/frames"})
        QVERIFY2(roomsSeen.contains(room), qPrintable("no source of " + room + " was read"));
}

QTEST_APPLESS_MAIN(TestIncludeArrows)
#include "tst_include_arrows.moc"
