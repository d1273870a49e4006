#include "image/PixelTypeCode.h"
#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"
#include "platform/viewer/picture/Picture.h"
#include "platform/viewer/picture/ProcessorChain.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QTest>

using namespace zor::viewer;

namespace {
int records = 0; ///< that the libraries made and have not got back
}

// The linker puts these in the place of the libraries' functions.
extern "C" {
int __real_ZorCloneImage(_ZorImage** slot, const _ZorImage* source);
int __real_ZimConvert(const _ZorImage* source, unsigned long targetPixelType, _ZorImage** result);
int __real_ZorReleaseImage(_ZorImage** slot);

int __wrap_ZorCloneImage(_ZorImage** slot, const _ZorImage* source)
{
    records -= *slot != nullptr;
    const int answer = __real_ZorCloneImage(slot, source);
    records += *slot != nullptr;
    return answer;
}

int __wrap_ZimConvert(const _ZorImage* source, unsigned long targetPixelType, _ZorImage** result)
{
    records -= *result != nullptr;
    const int answer = __real_ZimConvert(source, targetPixelType, result);
    records += *result != nullptr;
    return answer;
}

int __wrap_ZorReleaseImage(_ZorImage** slot)
{
    records -= *slot != nullptr;
    return __real_ZorReleaseImage(slot);
}
}

/// A picture gives its records back when it is cleared, not only when it ends.
class TestPictureMemory : public QObject
{
    Q_OBJECT

private slots:
    void aClearedPictureKeepsNoRecord_data();
    void aClearedPictureKeepsNoRecord();
};

void TestPictureMemory::aClearedPictureKeepsNoRecord_data()
{
    QTest::addColumn<quint32>("pixelType");
    QTest::addColumn<int>("held");
    QTest::newRow("source and output") << zor::Mono8 << 2;
    QTest::newRow("source, output and its luma") << codeOf("BayerRG8") << 3;
}

void TestPictureMemory::aClearedPictureKeepsNoRecord()
{
    QFETCH(quint32, pixelType);
    QFETCH(int, held);
    TestImage output(pixelType, 8, 6, [](int x, int y, int) { return x + y; });
    ProcessorChain chain;
    chain.add(new Replacer(output));
    Picture picture;
    int processed = 0;
    const TestImage image = flat(7, 8, 6);
    QCOMPARE(picture.load(image.record(), chain, &processed), ViewerStatus::Ok);
    QCOMPARE(records, held);
    picture.clear();
    QVERIFY(picture.isEmpty());
    QCOMPARE(records, 0);
}

QTEST_GUILESS_MAIN(TestPictureMemory)
#include "tst_picture_memory.moc"
