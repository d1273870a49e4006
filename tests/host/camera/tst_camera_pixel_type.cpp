#include "host/camera/CameraPixelType.h"

#include "image/PixelTypeCode.h"
#include "tests/host/camera/LibraryFormats.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <map>

using namespace zor;

/// Pixel types of records from the codes that cameras send.
class TestCameraPixelType : public QObject
{
    Q_OBJECT

private slots:
    void codeGivesTheFormat_data();
    void codeGivesTheFormat();
    void unknownCodeGivesNone_data();
    void unknownCodeGivesNone();
    void noFormatHasTwoCodes();
};

void TestCameraPixelType::codeGivesTheFormat_data()
{
    QTest::addColumn<quint32>("pfncCode");
    for (const LibraryFormat& format : libraryFormats())
        QTest::newRow(format.name) << format.pfncCode;
    // The library has no name for these.
    QTest::newRow("Mono10p") << 0x010A0046u;
    QTest::newRow("Mono12p") << 0x010C0047u;
    QTest::newRow("BayerGR14") << 0x01100109u;
    QTest::newRow("BayerRG14") << 0x0110010Au;
    QTest::newRow("BayerGB14") << 0x0110010Bu;
    QTest::newRow("BayerBG14") << 0x0110010Cu;
    QTest::newRow("RGB14") << 0x0230005Eu;
    QTest::newRow("BGR14") << 0x0230004Au;
    QTest::newRow("RGB16") << 0x02300033u;
    QTest::newRow("BGR16") << 0x0230004Bu;
    QTest::newRow("YCbCr422_8") << 0x0210003Bu;
}

void TestCameraPixelType::codeGivesTheFormat()
{
    QFETCH(quint32, pfncCode);
    const auto found = pixelTypeOfPfnc(pfncCode);
    QVERIFY(found);
    QCOMPARE(*found, codeOf(QTest::currentDataTag()));
    QCOMPARE(pixelTypeBits(*found), (pfncCode >> 16) & 0xFF);
}

void TestCameraPixelType::unknownCodeGivesNone_data()
{
    QTest::addColumn<quint32>("pfncCode");
    QTest::newRow("0") << 0u;
    QTest::newRow("the record's own code of Mono8") << 0x01080101u;
    QTest::newRow("signed Mono8") << 0x01080002u;
    QTest::newRow("Mono8 with the bits of Mono16") << 0x01100001u;
    QTest::newRow("RGB8 in planes") << 0x02180021u;
    QTest::newRow("YUV411") << 0x020C001Eu;
    QTest::newRow("YUV with 24 bits") << 0x02180020u;
    QTest::newRow("Coord3D_C16") << 0x011000B8u;
    QTest::newRow("one of the maker's own") << 0x810C0001u;
}

void TestCameraPixelType::unknownCodeGivesNone()
{
    QFETCH(quint32, pfncCode);
    QVERIFY(!pixelTypeOfPfnc(pfncCode));
}

void TestCameraPixelType::noFormatHasTwoCodes()
{
    std::map<std::uint32_t, int> codes;
    for (const std::uint32_t family : {1u, 2u}) {
        for (std::uint32_t bits = 1; bits < 0x40; ++bits) {
            for (std::uint32_t number = 0; number < 0x200; ++number) {
                if (const auto found = pixelTypeOfPfnc(family << 24 | bits << 16 | number))
                    ++codes[*found];
            }
        }
    }
    QVERIFY(codes.size() >= 60);
    for (const auto& [code, count] : codes)
        QVERIFY2(count == 1, exactPixelTypeRow(code)->name);
}

QTEST_APPLESS_MAIN(TestCameraPixelType)

#include "tst_camera_pixel_type.moc"
