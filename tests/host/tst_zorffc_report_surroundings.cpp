#include "tests/host/ZorffcRun.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

/// The sanitizers keep terabytes of address space and want to be loaded first.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool IsSanitized = true;
#else
constexpr bool IsSanitized = false;
#endif

const QStringList Report{"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png"};

/// Nothing but one variable, and what the sanitizers are to do.
QProcessEnvironment environmentWith(const QString& variable, const QString& value)
{
    QProcessEnvironment environment;
    for (const char* options : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"})
        environment.insert(options, qEnvironmentVariable(options));
    environment.insert(variable, value);
    return environment;
}

} // namespace

/// The report is the same picture whatever is around the process, or an error.
class TestZorffcReportSurroundings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theEnvironmentChangesNoByte_data();
    void theEnvironmentChangesNoByte();
    void noThreadIsNeeded();
    void shortOfMemoryThereIsThePictureOrAnError();
    void aPictureThatCannotBeWrittenIsAnError();

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    ZorffcRun runWithin(int kibibytes) const;

    QTemporaryDir m_folder;
    QByteArray m_picture; ///< in an empty environment
};

void TestZorffcReportSurroundings::initTestCase()
{
    QVERIFY(m_folder.isValid());
    QVERIFY(QDir(m_folder.path()).mkdir("empty"));
    writeFile(path("empty.conf"), "<fontconfig/>");
    writeFile(path("jagged.conf"),
              "<fontconfig><dir>/usr/share/fonts</dir><match target=\"font\">"
              "<edit name=\"antialias\" mode=\"assign\"><bool>false</bool></edit></match></fontconfig>");
    writeFile(path("loud.ini"), "[Rules]\n*=true\n");
    // Wider and taller than its place, so that it shrinks.
    QCOMPARE(runZorffc(m_folder.path(), {"simulate", "-o", "f.pgm", "--size", "1000x600"}).exitCode, 0);
    QCOMPARE(runZorffc(m_folder.path(), {"compute", "f.pgm", "--title", "T", "--camera", "C", "-o", "f.ffc"})
                 .exitCode,
             0);
    const ZorffcRun run = runZorffc(m_folder.path(), Report, environmentWith("NONE", ""));
    QVERIFY2(run.exitCode == 0 && run.err.isEmpty(), qPrintable(run.transcript()));
    m_picture = readFile(path("f.png"));
    QVERIFY(m_picture.size() > 10000);
}

void TestZorffcReportSurroundings::theEnvironmentChangesNoByte_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");
    const auto row = [](const char* variable, const QString& value, const char* meaning = nullptr) {
        QTest::addRow("%s=%s", variable, meaning ? meaning : qPrintable(value)) << QString(variable) << value;
    };
    row("QT_SCALE_FACTOR", "2");
    row("QT_FONT_DPI", "200");
    row("QT_AUTO_SCREEN_SCALE_FACTOR", "1");
    row("QT_ENABLE_HIGHDPI_SCALING", "1");
    row("QT_SCREEN_SCALE_FACTORS", "1.5");
    row("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
    row("QT_USE_PHYSICAL_DPI", "1");
    row("QT_QPA_PLATFORM", "xcb");
    row("QT_QPA_PLATFORM", "none of Qt's");
    row("QT_QPA_PLATFORM_PLUGIN_PATH", "/nowhere");
    row("QT_QPA_PLATFORMTHEME", "gtk3");
    row("QT_QPA_FONTDIR", "/nowhere");
    row("QT_QPA_GENERIC_PLUGINS", "evdevkeyboard");
    row("QT_STYLE_OVERRIDE", "windows");
    row("QT_STYLE_OVERRIDE", "none of Qt's");
    row("QT_PLUGIN_PATH", "/nowhere");
    row("QT_DEBUG_PLUGINS", "1");
    row("QT_LOGGING_RULES", "*=true");
    row("QT_LOGGING_CONF", path("loud.ini"), "(all remarks)");
    row("QT_LOGGING_TO_CONSOLE", "1");
    row("QT_FATAL_WARNINGS", "1");
    row("QT_FATAL_CRITICALS", "1");
    row("QT_IMAGEIO_MAXALLOC", "1");
    row("QT_HARFBUZZ", "old");
    row("QT_NO_GLIB", "1");
    row("QT_IM_MODULE", "ibus");
    row("QT_LAYOUT_RTL", "1");
    row("DISPLAY", ":77");
    row("WAYLAND_DISPLAY", "wayland-7");
    row("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    row("FONTCONFIG_FILE", path("empty.conf"), "(no fonts)");
    row("FONTCONFIG_FILE", path("jagged.conf"), "(no shades of grey)");
    row("FONTCONFIG_FILE", "/nowhere");
    row("FONTCONFIG_PATH", "/nowhere");
    row("FONTCONFIG_SYSROOT", path("empty"), "(an empty folder)");
    row("FC_DEBUG", "1024");
    row("FC_LANG", "ja");
    row("FREETYPE_PROPERTIES", "truetype:interpreter-version=35 cff:no-stem-darkening=0");
    row("HOME", "/nowhere");
    row("XDG_CONFIG_HOME", path("empty"), "(an empty folder)");
    row("XDG_DATA_HOME", path("empty"), "(an empty folder)");
    row("XDG_RUNTIME_DIR", "/nowhere");
    row("XDG_CURRENT_DESKTOP", "KDE");
    row("LANG", "de_DE.UTF-8");
    row("LC_ALL", "C.UTF-8");
    row("LC_ALL", "ar_EG.UTF-8");
    row("LANGUAGE", "he");
    row("TZ", "Asia/Tokyo");
    row("TMPDIR", "/nowhere");
    row("PATH", "");
}

void TestZorffcReportSurroundings::theEnvironmentChangesNoByte()
{
    QFETCH(QString, variable);
    QFETCH(QString, value);
    QFile::remove(path("f.png"));
    const ZorffcRun run = runZorffc(m_folder.path(), Report, environmentWith(variable, value));
    QVERIFY2(run.exitCode == 0 && run.err.isEmpty(), qPrintable(run.transcript()));
    QVERIFY(readFile(path("f.png")) == m_picture);
}

void TestZorffcReportSurroundings::noThreadIsNeeded()
{
    if (IsSanitized)
        QSKIP("nothing can be loaded in front of a sanitizer");
    QFile::remove(path("f.png"));
    const ZorffcRun run =
        runZorffc(m_folder.path(), Report, environmentWith("LD_PRELOAD", NO_THREADS_LIBRARY));
    QVERIFY2(run.exitCode == 0 && run.err.isEmpty(), qPrintable(run.transcript()));
    QVERIFY(readFile(path("f.png")) == m_picture);
}

ZorffcRun TestZorffcReportSurroundings::runWithin(int kibibytes) const
{
    QFile::remove(path("f.png"));
    return runShell(m_folder.path(), QString("ulimit -c 0; ulimit -v %1; exec \"$@\"").arg(kibibytes),
                    Report);
}

void TestZorffcReportSurroundings::shortOfMemoryThereIsThePictureOrAnError()
{
    if (IsSanitized)
        QSKIP("a sanitizer takes all the address space that there is");
    // The least that the picture needs, to a page.
    constexpr int page = 4;
    constexpr int ample = 4 << 20;
    int tooLittle = 0;
    int enough = ample;
    QCOMPARE(runWithin(enough).exitCode, 0);
    while (enough - tooLittle > page) {
        const int middle = (tooLittle + enough) / 2;
        (runWithin(middle).exitCode == 0 ? enough : tooLittle) = middle;
    }
    const auto isPicture = [this](int kibibytes) {
        const ZorffcRun run = runWithin(kibibytes);
        return run.exitCode == 0 && run.err.isEmpty() && readFile(path("f.png")) == m_picture;
    };
    const auto isError = [this](int kibibytes) {
        const ZorffcRun run = runWithin(kibibytes);
        return run.exitCode == 2 && run.err.startsWith("zorffc: ") && run.err.contains("not enough memory") &&
               run.err.count('\n') == 1 && !QFile::exists(path("f.png"));
    };
    // From here on down the program itself is loaded with less and less to spare.
    constexpr int loaded = 64 << 10;
    for (int step = 0; step < 16; ++step) {
        const int below = enough - 8 * page - step * loaded / 16;
        QVERIFY2(isError(below), qPrintable(runWithin(below).transcript()));
        const int above = enough + 8 * page + step * (2 << 10);
        QVERIFY2(isPicture(above), qPrintable(runWithin(above).transcript()));
    }
}

void TestZorffcReportSurroundings::aPictureThatCannotBeWrittenIsAnError()
{
    QFile::remove(path("f.png"));
    const QStringList before = namesIn(m_folder.path());
    const ZorffcRun run = runShell(m_folder.path(), "ulimit -f 16; exec \"$@\"", Report);
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.err.startsWith("zorffc: f.png: cannot be written: ") && run.err.count('\n') == 1,
             qPrintable(run.transcript()));
    QCOMPARE(namesIn(m_folder.path()), before);
}

QTEST_GUILESS_MAIN(TestZorffcReportSurroundings)
#include "tst_zorffc_report_surroundings.moc"
