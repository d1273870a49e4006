#include "image/HighLightProcessor.h"
#include "tests/fakes/FakeConverter.h"
#include "tests/fakes/FakeViewer.h"
#include "tests/support/Cursors.h"
#include "tests/support/DialogProbe.h"

#include <QCheckBox>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <set>

namespace {

using Names = std::vector<std::string>;

/// The dialog on the screen, with hands on the check box. The fake viewers take no processor over; those that
/// the dialog made are given back here, so that the leak checker finds one that somebody else lost.
class HighlightDialog : public DialogProbe
{
public:
    ~HighlightDialog() override
    {
        for (HighLightProcessor* processor : m_made)
            delete processor;
    }

    void clickBox()
    {
        QTest::mouseClick(ui.chBHighlights, Qt::LeftButton, {}, QPoint(8, ui.chBHighlights->height() / 2));
        note();
    }
    void showFrame()
    {
        take(TestFrame::even(6, 4, 12, 500));
        Update();
    }
    /// Remembers the present processor.
    void note()
    {
        if (m_highLight)
            m_made.insert(m_highLight);
    }
    std::size_t made() const { return m_made.size(); }

private:
    std::set<HighLightProcessor*> m_made;
};

/// What was asked of viewers since the calls were forgotten, with the texts of settings and actions.
Names asked()
{
    Names names;
    for (const ViewerCall& call : FakeViewer::calls()) {
        const bool isShown = call.name == "display";
        const QString view = isShown ? call.target->objectName() : QString();
        names.push_back(call.name + (isShown ? " " + view.toStdString() : "") +
                        (call.text.empty() ? "" : " " + call.text));
    }
    return names;
}

std::string processorText(const HighLightProcessor* processor)
{
    char address[256] = {};
    std::snprintf(address, sizeof address, "%p", static_cast<const void*>(processor));
    return std::string("setText processor=") + address;
}

/// The address that the viewer got last, as a viewer reads it.
const void* toldAddress()
{
    const std::vector<ViewerCall> texts = FakeViewer::callsOf("setText");
    void* address = nullptr;
    if (!texts.empty())
        std::sscanf(texts.back().text.c_str(), "processor=%p", &address);
    return address;
}

} // namespace

/// The check box that puts a processor of bright pixels into the upper viewer and takes it out.
class TestHighlights : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void tickAddsAProcessor();
    void untickTakesItOut();
    void theUpperViewersSettingsAreAskedTwice();
    void twoTicksMakeTwoProcessors();
    void theDialogKeepsItsProcessorAlive();
    void boxWorksAfterTheFrameIsDropped_data();
    void boxWorksAfterTheFrameIsDropped();
    void withoutAViewerAProcessorIsMadeAndKept_data();
    void withoutAViewerAProcessorIsMadeAndKept();
    void viewerWithoutSettingsIsAskedForNothing();
    void clicksInsideARefreshComeAfterIt();
};

void TestHighlights::init()
{
    FakeViewer::reset();
    fakeConverter = FakeConverter();
}

void TestHighlights::cleanup()
{
    restoreAllCursors();
}

void TestHighlights::tickAddsAProcessor()
{
    HighlightDialog d;
    d.show();
    d.showFrame();
    QVERIFY(!d.m_highLight);
    FakeViewer::calls().clear();
    d.clickBox();
    QVERIFY(d.ui.chBHighlights->isChecked());
    QVERIFY(d.m_highLight);
    QVERIFY(!d.m_highLight->outputImage());
    QCOMPARE(asked(), (Names{processorText(d.m_highLight), "run processing.proc.add", "display gVUp",
                             "display gVDown"}));
    QCOMPARE(toldAddress(), static_cast<const void*>(static_cast<const ZorImgProcessor*>(d.m_highLight)));
    QCOMPARE(restoreAllCursors(), 0);
}

void TestHighlights::untickTakesItOut()
{
    HighlightDialog d;
    d.show();
    d.showFrame();
    d.clickBox();
    HighLightProcessor* const processor = d.m_highLight;
    FakeViewer::calls().clear();
    d.clickBox();
    QVERIFY(!d.ui.chBHighlights->isChecked());
    QCOMPARE(asked(), (Names{"run processing.proc.del", "display gVUp", "display gVDown"}));
    QCOMPARE(d.m_highLight, processor);
}

void TestHighlights::theUpperViewersSettingsAreAskedTwice()
{
    HighlightDialog d;
    d.show();
    d.showFrame();
    FakeViewer::calls().clear();
    FakeViewer::script().onSettings = [](QWidget* view) {
        FakeViewer::calls().push_back({"settings", false, {}, {}, nullptr, nullptr, {}});
        QCOMPARE(view->objectName(), QString("gVUp"));
    };
    d.clickBox();
    QCOMPARE(asked(), (Names{"settings", processorText(d.m_highLight), "settings", "run processing.proc.add",
                             "display gVUp", "display gVDown"}));
    FakeViewer::calls().clear();
    d.clickBox();
    QCOMPARE(asked(), (Names{"settings", "run processing.proc.del", "display gVUp", "display gVDown"}));
}

void TestHighlights::twoTicksMakeTwoProcessors()
{
    HighlightDialog d;
    d.show();
    d.showFrame();
    d.clickBox();
    HighLightProcessor* const first = d.m_highLight;
    d.clickBox();
    d.clickBox();
    QVERIFY(d.m_highLight != first);
    QCOMPARE(d.made(), std::size_t{2});
    QCOMPARE(toldAddress(), static_cast<const void*>(d.m_highLight));
    QCOMPARE(FakeViewer::callsOf("setText").size(), std::size_t{2});
    // The first one is there still: only its owner may delete it.
    QCOMPARE(first->constantOne(), 1);
    QVERIFY(!first->outputImage());
}

void TestHighlights::theDialogKeepsItsProcessorAlive()
{
    HighLightProcessor* made = nullptr;
    {
        DialogProbe d;
        d.show();
        d.take(TestFrame::even(6, 4, 12, 500));
        d.Update();
        d.ui.chBHighlights->click();
        made = d.m_highLight;
        d.ui.chBHighlights->click();
        d.ResetData(true);
    }
    const std::unique_ptr<HighLightProcessor> owned(made);
    QCOMPARE(owned->constantOne(), 1);
}

void TestHighlights::boxWorksAfterTheFrameIsDropped_data()
{
    QTest::addColumn<bool>("wasTicked");
    QTest::newRow("tick") << false;
    QTest::newRow("untick") << true;
}

void TestHighlights::boxWorksAfterTheFrameIsDropped()
{
    QFETCH(bool, wasTicked);
    HighlightDialog d;
    d.show();
    d.showFrame();
    if (wasTicked)
        d.clickBox();
    d.ResetData(false);
    FakeViewer::calls().clear();
    d.clickBox();
    QCOMPARE(asked(), wasTicked ? Names{"run processing.proc.del"}
                                : (Names{processorText(d.m_highLight), "run processing.proc.add"}));
    // The refresh without a result gives its cursor back.
    QCOMPARE(restoreAllCursors(), 0);
}

void TestHighlights::withoutAViewerAProcessorIsMadeAndKept_data()
{
    QTest::addColumn<bool>("isShown");
    QTest::addColumn<bool>("hasResult");
    QTest::newRow("before the first show") << false << false;
    QTest::newRow("before the first show, with a result") << false << true;
    QTest::newRow("before the first image") << true << false;
}

// Nobody takes these over, so they are lost when the dialog forgets them.
void TestHighlights::withoutAViewerAProcessorIsMadeAndKept()
{
    QFETCH(bool, isShown);
    QFETCH(bool, hasResult);
    HighlightDialog d;
    if (isShown)
        d.show();
    if (hasResult) {
        d.take(TestFrame::even(6, 4, 12, 500));
        QVERIFY(d.RunCorrection());
    }
    d.clickBox();
    QVERIFY(d.m_highLight);
    d.clickBox();
    d.clickBox();
    QCOMPARE(d.made(), std::size_t{2});
    QVERIFY(FakeViewer::calls().empty());
    // It goes on to the refresh, which leaves the wait cursor when it has a result and no adapters.
    QCOMPARE(restoreAllCursors(), hasResult ? 3 : 0);
}

void TestHighlights::viewerWithoutSettingsIsAskedForNothing()
{
    HighlightDialog d;
    d.show();
    d.showFrame();
    FakeViewer::script().hasSettings = false;
    FakeViewer::calls().clear();
    d.clickBox();
    QVERIFY(d.m_highLight);
    QCOMPARE(asked(), (Names{"display gVUp", "display gVDown"}));
    FakeViewer::calls().clear();
    d.clickBox();
    QCOMPARE(asked(), (Names{"display gVUp", "display gVDown"}));
}

// The viewer's start runs in a nested event loop, where a click would wait for its own refresh.
void TestHighlights::clicksInsideARefreshComeAfterIt()
{
    HighlightDialog d;
    d.show();
    int clicks = 0;
    FakeViewer::script().onConfigure = [&](QWidget*) {
        ++clicks;
        d.clickBox();
        QVERIFY(!d.m_highLight);
    };
    d.showFrame();
    d.note();
    QCOMPARE(clicks, 2);
    Names names = asked();
    names.erase(names.begin(), std::find(names.begin(), names.end(), "display gVDown"));
    // The first click ticked the box, the second one took the tick back.
    QCOMPARE(names,
             (Names{"display gVDown", processorText(d.m_highLight), "run processing.proc.add", "display gVUp",
                    "display gVDown", "run processing.proc.del", "display gVUp", "display gVDown"}));
}

QTEST_MAIN(TestHighlights)
#include "tst_highlights.moc"
