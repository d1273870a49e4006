#include "tests/host/ZorffcRun.h"

#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <random>

namespace {

/// Depth, size and content of the frames that both sides get.
struct FrameShape
{
    int depth;
    int width;
    int height;
    const char* content; ///< "random", "vignette", "black column", "black row", "black", "bright"
};

TestFrame makeFrame(const FrameShape& frame)
{
    std::mt19937 random(static_cast<unsigned>(frame.depth * 1000 + frame.width));
    const unsigned limit = (1U << frame.depth) - 1U;
    const QByteArray content(frame.content);
    return TestFrame(frame.width, frame.height, frame.depth, [&](int x, int y) -> unsigned {
        const unsigned noise = static_cast<unsigned>(random());
        if (content == "black" || (content == "black column" && x == 1) || (content == "black row" && y == 1))
            return 0;
        if (content == "bright")
            return limit - noise % 4;
        if (content == "random")
            return noise % (limit + 1U);
        const double middle = (x - frame.width / 2.0) * (x - frame.width / 2.0) / (frame.width * frame.width);
        return static_cast<unsigned>(limit * (0.8 - middle)) - noise % (limit / 20U + 1U);
    });
}

QByteArray pgmOf(const TestFrame& frame)
{
    std::vector<std::uint16_t> samples;
    for (int y = 0; y < frame.height; ++y) {
        const std::uint8_t* row = frame.bytes.data() + y * frame.step;
        for (int x = 0; x < frame.width; ++x)
            samples.push_back(
                frame.depth == 8 ? row[x] : static_cast<std::uint16_t>(row[2 * x] | row[2 * x + 1] << 8));
    }
    return pgm(frame.width, frame.height, (1 << frame.depth) - 1, samples);
}

/// Everything from the first table on; what comes before holds the day of the save.
QByteArray tables(const QByteArray& file)
{
    return file.mid(file.indexOf(":Table,"));
}

/// Empty when equal, else the first line that is not.
QByteArray difference(const QByteArray& actual, const QByteArray& expected)
{
    const QList<QByteArray> left = actual.split('\n');
    const QList<QByteArray> right = expected.split('\n');
    for (int i = 0; i < qMax(left.size(), right.size()); ++i) {
        if (left.value(i) != right.value(i) || i >= left.size() || i >= right.size())
            return "line " + QByteArray::number(i) + ": command line '" + left.value(i) + "', dialog '" +
                   right.value(i) + "'";
    }
    return {};
}

} // namespace

Q_DECLARE_METATYPE(FrameShape)

/// The command line and the dialog make the same file of the same frame.
class TestZorffcDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void tablesAreThoseOfTheDialog_data();
    void tablesAreThoseOfTheDialog();
    void theDialogsFileIsRead();

private:
    /// The file that the dialog saves after an update with the given settings.
    QByteArray save(const TestFrame& frame, const QString& normalize, int precision);

    QTemporaryDir m_folder;
};

void TestZorffcDialog::initTestCase()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

QByteArray TestZorffcDialog::save(const TestFrame& frame, const QString& normalize, int precision)
{
    const QString target = m_folder.filePath(QStringLiteral("dialog.ffc"));
    QFile::remove(target);
    DialogProbe dialog;
    ModalWatch watch;
    watch.chosenFile = target;
    dialog.ui.chBNormFFC->setChecked(!normalize.isEmpty());
    if (!normalize.isEmpty())
        dialog.ui.lENormFFC->setText(normalize);
    dialog.ui.cBoxPrecision->setCurrentIndex(precision == 8 ? 0 : 1);
    dialog.take(frame);
    dialog.ui.pBUpdate->click();
    dialog.ui.lETitle->setText(QStringLiteral("Title"));
    dialog.ui.lECamera->setText(QStringLiteral("Camera"));
    dialog.ui.pBSave->click();
    return watch.texts.isEmpty() ? readFile(target) : watch.texts.join(' ').toUtf8();
}

void TestZorffcDialog::tablesAreThoseOfTheDialog_data()
{
    QTest::addColumn<FrameShape>("frame");
    QTest::addColumn<QString>("normalize"); // empty: the mean is the target
    QTest::addColumn<int>("precision");
    const FrameShape frames[] = {
        {8, 64, 48, "vignette"},      {8, 61, 37, "random"},     {8, 33, 20, "black column"},
        {8, 7, 5, "black row"},       {8, 5, 4, "black"},        {8, 1, 1, "random"},
        {10, 64, 48, "vignette"},     {10, 63, 31, "random"},    {10, 17, 9, "black column"},
        {12, 128, 96, "vignette"},    {12, 129, 95, "random"},   {12, 31, 12, "black column"},
        {12, 31, 12, "bright"},       {16, 64, 48, "vignette"},  {16, 65, 47, "random"},
        {16, 3, 200, "black column"}, {16, 200, 3, "black row"},
    };
    for (const FrameShape& frame : frames) {
        for (const char* normalize : {"1", "0.5", "1.75", ""}) {
            for (const int precision : {8, 12}) {
                QTest::addRow("%d bits, %d x %d, %s, %s, %d fraction bits", frame.depth, frame.width,
                              frame.height, frame.content, *normalize ? normalize : "mean", precision)
                    << frame << QString(normalize) << precision;
            }
        }
    }
}

void TestZorffcDialog::tablesAreThoseOfTheDialog()
{
    QFETCH(FrameShape, frame);
    QFETCH(QString, normalize);
    QFETCH(int, precision);
    const TestFrame pixels = makeFrame(frame);
    writeFile(m_folder.filePath("f.pgm"), pgmOf(pixels));
    const QStringList target =
        normalize.isEmpty() ? QStringList{"--mean"} : QStringList{"--normalize", normalize};
    const ZorffcRun run =
        runZorffc(m_folder.path(), QStringList{"compute", "f.pgm", "--title", "Title", "--camera", "Camera",
                                               "--precision", QString::number(precision), "-o", "f.ffc"} +
                                       target);
    QVERIFY2(run.exitCode == 0, qPrintable(run.transcript()));

    const QByteArray saved = save(pixels, normalize, precision);
    QVERIFY2(saved.startsWith("-- Flat Field Correction"), saved.constData());
    const QByteArray expected = tables(saved);
    // Two heading lines for each table, one line for each entry, and what comes after the last line end.
    QCOMPARE(expected.count('\n'), 4 + frame.width + frame.height);
    const QByteArray wrong = difference(tables(readFile(m_folder.filePath("f.ffc"))), expected);
    QVERIFY2(wrong.isEmpty(), wrong.constData());
}

void TestZorffcDialog::theDialogsFileIsRead()
{
    const TestFrame pixels = makeFrame({12, 64, 48, "vignette"});
    writeFile(m_folder.filePath("f.pgm"), pgmOf(pixels));
    writeFile(m_folder.filePath("f.ffc"), save(pixels, "1", 12));
    const ZorffcRun run =
        runZorffc(m_folder.path(), {"report", "f.pgm", "--ffc", "f.ffc", "--precision", "12", "-o", "f.png"});
    QVERIFY2(run.exitCode == 0 && run.err.isEmpty(), qPrintable(run.transcript()));
}

QTEST_MAIN(TestZorffcDialog)
#include "tst_zorffc_dialog.moc"
