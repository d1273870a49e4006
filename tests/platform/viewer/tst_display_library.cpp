#include <QProcess>
#include <QTest>

/// The shared library offers the two factories and nothing else.
class TestDisplayLibrary : public QObject
{
    Q_OBJECT

private slots:
    void exportsTheFactoriesAlone();
};

void TestDisplayLibrary::exportsTheFactoriesAlone()
{
    QProcess nm;
    nm.start("nm", {"--dynamic", "--defined-only", "--demangle", DISPLAY_LIBRARY});
    QVERIFY(nm.waitForFinished());
    QCOMPARE(nm.exitCode(), 0);
    QStringList names;
    for (const QString& line : QString::fromUtf8(nm.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts))
        names << line.section(' ', 2);
    names.sort();
    QCOMPARE(names, (QStringList{"ZorDisplayCPU::CreateComponent(QWidget*)",
                                 "ZorDisplayCPU::DeleteComponent(ZorDisplayProcessor*)",
                                 "ZorDisplayQGL::CreateComponent(QWidget*)",
                                 "ZorDisplayQGL::DeleteComponent(ZorDisplayProcessor*)"}));
}

QTEST_GUILESS_MAIN(TestDisplayLibrary)
#include "tst_display_library.moc"
