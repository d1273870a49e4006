#include "image/PixelTypeCode.h"
#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"
#include "tests/support/RecordOf.h"

#include <QtTest>

#include <vector>

/// The two image libraries as a program finds them: what they export, and that they work together.
class TestImageLibraries : public QObject
{
    Q_OBJECT

private slots:
    void exactlyTheirFunctionsAreExported_data();
    void exactlyTheirFunctionsAreExported();
    void whatOneConvertsTheOtherClonesAndReleases();
};

void TestImageLibraries::exactlyTheirFunctionsAreExported_data()
{
    QTest::addColumn<QString>("library");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("ZorImageApi") << IMAGE_API
                                 << QStringList{"ZorCloneImage", "ZorCreateImageHeader", "ZorReleaseImage",
                                                "ZorReleaseImageHeader"};
    QTest::newRow("ZorImageConverter") << IMAGE_CONVERTER << QStringList{"ZimConvert"};
}

void TestImageLibraries::exactlyTheirFunctionsAreExported()
{
    QFETCH(QString, library);
    QFETCH(QStringList, names);
    QProcess nm;
    nm.start("nm", {"--dynamic", "--defined-only", "--format=posix", library});
    QVERIFY(nm.waitForFinished());
    QCOMPARE(nm.exitCode(), 0);
    QStringList exported;
    for (const QByteArray& line : nm.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty())
            exported.append(QString::fromLatin1(line).section(' ', 0, 0));
    }
    exported.sort();
    QCOMPARE(exported, names);
}

void TestImageLibraries::whatOneConvertsTheOtherClonesAndReleases()
{
    std::vector<std::uint8_t> pixels = {10, 20, 30};
    const _ZorImage source = recordOf(zor::Mono8, 3, 1, pixels);
    _ZorImage* converted = nullptr;
    QCOMPARE(ZimConvert(&source, zor::Mono8, &converted), 0);
    _ZorImage* clone = nullptr;
    QCOMPARE(ZorCloneImage(&clone, converted), 0);
    QCOMPARE(int(clone->data[2]), 30);
    // A converted record may also be the slot of the next clone.
    QCOMPARE(ZorCloneImage(&converted, &source), 0);
    QCOMPARE(converted->pitch, 3U);
    QCOMPARE(ZorReleaseImage(&converted), 0);
    QCOMPARE(ZorReleaseImage(&clone), 0);
}

QTEST_APPLESS_MAIN(TestImageLibraries)
#include "tst_image_libraries.moc"
