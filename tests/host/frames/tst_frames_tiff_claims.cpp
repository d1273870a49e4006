#include "tests/host/frames/FrameFiles.h"
#include "tests/host/frames/MakeTiff.h"
#include "tests/host/frames/TiffEntries.h"

#include <QtTest>

#include <tiff.h>

/// TIFF files whose entries promise what their bytes do not keep.
class TestFramesTiffClaims : public QObject
{
    Q_OBJECT

private slots:
    void aFileHoldsWhatItsCompressionCan_data();
    void aFileHoldsWhatItsCompressionCan();
    void tilesCountWhole_data();
    void tilesCountWhole();
    void tilesHaveAtMost16MillionSamples();
    void tilesOfOneSampleAreRead();
    void compressionsOfOtherPicturesAreRefused_data();
    void compressionsOfOtherPicturesAreRefused();
    void brokenDataHaveAReason_data();
    void brokenDataHaveAReason();
    void anEntryThatNobodyKnowsIsNoFault();

private:
    FrameFiles m_files;
};

namespace {

/// The picture in one strip.
TiffEntries strip(quint32 width, quint32 height, quint32 compression)
{
    TiffEntries entries = greyEntries(width, height, compression);
    entries[TIFFTAG_STRIPOFFSETS] = {TiffDataPlace};
    entries[TIFFTAG_ROWSPERSTRIP] = {height};
    entries[TIFFTAG_STRIPBYTECOUNTS] = {4};
    return entries;
}

/// The picture in tiles that share one place.
TiffEntries tiles(quint32 width, quint32 height, quint32 tileWidth, quint32 tileHeight, int count)
{
    TiffEntries entries = greyEntries(width, height, COMPRESSION_NONE);
    entries[TIFFTAG_TILEWIDTH] = {tileWidth};
    entries[TIFFTAG_TILELENGTH] = {tileHeight};
    entries[TIFFTAG_TILEOFFSETS] = {};
    entries[TIFFTAG_TILEBYTECOUNTS] = {};
    for (int i = 0; i < count; ++i) {
        entries[TIFFTAG_TILEOFFSETS].append(TiffDataPlace);
        entries[TIFFTAG_TILEBYTECOUNTS].append(tileWidth * tileHeight);
    }
    return entries;
}

QString claim(quint64 asked, int needed, int found)
{
    return QString("its header asks for %1 bytes of samples, which takes a file of at least %2 bytes; it has "
                   "%3; write or copy the file again")
        .arg(asked)
        .arg(needed)
        .arg(found);
}

} // namespace

void TestFramesTiffClaims::aFileHoldsWhatItsCompressionCan_data()
{
    QTest::addColumn<quint32>("compression");
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<int>("needed");
    const auto add = [](const char* name, quint32 compression, quint32 width, quint32 height, int needed) {
        QTest::newRow(name) << compression << width << height << needed;
    };
    add("none: a byte a sample", COMPRESSION_NONE, 50, 40, 2000);
    add("PackBits: 128 of two", COMPRESSION_PACKBITS, 64, 2000, 2000);
    add("LZW: 3839 of one and a half", COMPRESSION_LZW, 2560, 2000, 2000);
    add("Deflate: 258 of a quarter", COMPRESSION_ADOBE_DEFLATE, 1032, 2000, 2000);
    add("Deflate's old number", COMPRESSION_DEFLATE, 1032, 2000, 2000);
    // 64 MiB and 1032 times 2048 bytes.
    add("JPEG: as Deflate above 64 MiB", COMPRESSION_JPEG, 2048, 33800, 2048);
    add("LERC: as Deflate above 64 MiB", COMPRESSION_LERC, 2048, 33800, 2048);
    add("LZMA: as Deflate above 64 MiB", COMPRESSION_LZMA, 2048, 33800, 2048);
    add("Zstandard: as Deflate above 64 MiB", COMPRESSION_ZSTD, 2048, 33800, 2048);
}

void TestFramesTiffClaims::aFileHoldsWhatItsCompressionCan()
{
    QFETCH(quint32, compression);
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(int, needed);
    const TiffEntries entries = strip(width, height, compression);
    const QString refused = m_files.error(tiffOfEntries(entries, "    ", needed - 1));
    QVERIFY2(refused.endsWith(": " + claim(quint64{width} * height, needed, needed - 1)),
             qPrintable(refused));
    // With a byte more it is up to the data, which are none.
    const QString broken = m_files.error(tiffOfEntries(entries, "    ", needed));
    QVERIFY2(broken.contains(": the TIFF data are broken ("), qPrintable(broken));
}

void TestFramesTiffClaims::tilesCountWhole_data()
{
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<int>("count");
    QTest::newRow("one for a pixel") << 1U << 1U << 1;
    QTest::newRow("one that is filled") << 32U << 16U << 1;
    QTest::newRow("another for a column") << 33U << 1U << 2;
    QTest::newRow("another for a row") << 1U << 17U << 2;
    QTest::newRow("three by two") << 65U << 32U << 6;
}

void TestFramesTiffClaims::tilesCountWhole()
{
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(int, count);
    const TiffEntries entries = tiles(width, height, 32, 16, count);
    const int needed = 512 * count;
    const QString refused = m_files.error(tiffOfEntries(entries, {}, needed - 1));
    QVERIFY2(refused.endsWith(": " + claim(quint64(needed), needed, needed - 1)), qPrintable(refused));
    // All lie at one place, where a file that is large enough has one.
    QCOMPARE(m_files.error(tiffOfEntries(entries, {}, needed + int{TiffDataPlace})), QString());
}

void TestFramesTiffClaims::tilesHaveAtMost16MillionSamples()
{
    const QString most = m_files.error(tiffOfEntries(tiles(1, 1, 4096, 4096, 1)));
    QVERIFY2(most.contains(": its header asks for 16777216 bytes of samples"), qPrintable(most));
    const QString more = m_files.error(tiffOfEntries(tiles(1, 1, 4096, 4097, 1)));
    QVERIFY2(more.endsWith(": its tiles of 4096x4097 are not usable; save it in strips"), qPrintable(more));
}

void TestFramesTiffClaims::tilesOfOneSampleAreRead()
{
    TiffEntries entries = tiles(2, 2, 1, 1, 4);
    entries[TIFFTAG_TILEOFFSETS] = {TiffDataPlace, TiffDataPlace + 1, TiffDataPlace + 2, TiffDataPlace + 3};
    QCOMPARE(samplesOf(m_files.read(tiffOfEntries(entries, "ABCD"))), (QList<int>{65, 66, 67, 68}));
}

void TestFramesTiffClaims::compressionsOfOtherPicturesAreRefused_data()
{
    QTest::addColumn<quint32>("compression");
    QTest::addColumn<QString>("name");
    QTest::newRow("fax lines") << 2U << "2 (CCITT RLE)";
    QTest::newRow("fax, group 3") << 3U << "3 (CCITT Group 3)";
    QTest::newRow("fax, group 4") << 4U << "4 (CCITT Group 4)";
    QTest::newRow("JPEG's old way") << 6U << "6 (Old-style JPEG)";
    QTest::newRow("2 bits") << 32766U << "32766 (NeXT)";
    QTest::newRow("fax words") << 32771U << "32771 (CCITT RLE/W)";
    QTest::newRow("4 bits") << 32809U << "32809 (ThunderScan)";
    QTest::newRow("bits") << 34661U << "34661 (ISO JBIG)";
    QTest::newRow("film") << 32909U << "32909 (PixarLog)";
    QTest::newRow("logarithms") << 34676U << "34676 (SGILog)";
    QTest::newRow("colour logarithms") << 34677U << "34677 (SGILog24)";
    QTest::newRow("colour") << 50001U << "50001 (WEBP)";
    QTest::newRow("a number without a name") << 12345U << "12345";
}

void TestFramesTiffClaims::compressionsOfOtherPicturesAreRefused()
{
    QFETCH(quint32, compression);
    QFETCH(QString, name);
    const QString text = m_files.error(tiffOfEntries(strip(2, 2, compression), "    "));
    QVERIFY2(text.endsWith(": its compression " + name +
                           " is not read here; save it uncompressed, or with LZW or Deflate"),
             qPrintable(text));
}

void TestFramesTiffClaims::brokenDataHaveAReason_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");

    TiffEntries sparse = strip(2, 2, COMPRESSION_NONE);
    sparse[TIFFTAG_ROWSPERSTRIP] = {1};
    sparse[TIFFTAG_STRIPOFFSETS] = {0, 0};
    sparse[TIFFTAG_STRIPBYTECOUNTS] = {0, 0};
    QTest::newRow("strips that are left out")
        << tiffOfEntries(sparse, "    ") << "Invalid strip byte count 0, strip 0";
    TiffEntries outside = strip(2, 2, COMPRESSION_NONE);
    outside[TIFFTAG_STRIPOFFSETS] = {100000};
    QTest::newRow("a strip past the end") << tiffOfEntries(outside, "    ") << "Read error on strip 0";
    TiffEntries placeless = tiles(32, 16, 32, 16, 1);
    placeless.remove(TIFFTAG_TILEOFFSETS);
    QTest::newRow("tiles without a place")
        << tiffOfEntries(placeless, {}, 512) << "TIFF directory is missing required \"TileOffsets\" field";

    TiffEntries flat = tiles(32, 16, 32, 16, 1);
    flat.remove(TIFFTAG_TILELENGTH);
    QTest::newRow("tiles without a height")
        << tiffOfEntries(flat, {}, 1024) << "Cannot handle zero number of tiles";
    QTest::newRow("tiles of width 0")
        << tiffOfEntries(tiles(32, 16, 0, 16, 1), {}, 1024) << "Cannot handle zero number of tiles";
    // The library says nothing about this one.
    TiffEntries far = tiles(33, 16, 32, 16, 2);
    far[TIFFTAG_TILEOFFSETS] = {TiffDataPlace, 100000};
    QTest::newRow("a tile past the end")
        << tiffOfEntries(far, {}, 1024) << "the tile at column 32, row 0 cannot be read)";
    far[65000] = {7};
    QTest::newRow("a tile past the end, and a warning before")
        << tiffOfEntries(far, {}, 1024)
        << "the tile at column 32, row 0 cannot be read: Unknown field with tag 65000 (0xfde8) encountered)";

    // JPEG's decoder only warns, and goes on with grey.
    TiffContent squares;
    squares.width = 16;
    squares.height = 16;
    squares.rowsPerStrip = 16;
    squares.compression = COMPRESSION_JPEG;
    for (int i = 0; i < 256; ++i)
        squares.samples.append(i * 7919 % 256);
    QByteArray cut = makeTiff(squares);
    const int count = cut.indexOf(QByteArray::fromHex("1701")) + 8;
    cut[count] = char(cut[count] - 20);
    QTest::newRow("a JPEG strip that ends early")
        << cut << "row 8 cannot be read: Premature end of JPEG file";
    squares.tileSide = 16;
    QByteArray cutTile = makeTiff(squares);
    const int tileCount = cutTile.indexOf(QByteArray::fromHex("4501")) + 8;
    cutTile[tileCount] = char(cutTile[tileCount] - 20);
    QTest::newRow("a JPEG tile that ends early")
        << cutTile << "the tile at column 0, row 0 cannot be read: Premature end of JPEG file";
}

void TestFramesTiffClaims::brokenDataHaveAReason()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    const QString text = m_files.error(bytes);
    QVERIFY2(text.contains(": the TIFF data are broken (" + reason), qPrintable(text));
}

void TestFramesTiffClaims::anEntryThatNobodyKnowsIsNoFault()
{
    TiffEntries entries = strip(2, 2, COMPRESSION_NONE);
    entries[65000] = {7};
    QCOMPARE(samplesOf(m_files.read(tiffOfEntries(entries, "ABCD"))), (QList<int>{65, 66, 67, 68}));
}

QTEST_GUILESS_MAIN(TestFramesTiffClaims)
#include "tst_frames_tiff_claims.moc"
