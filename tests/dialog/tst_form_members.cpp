#include "display/DisplayView.h"
#include "tests/support/DialogProbe.h"
#include "tests/support/PropertyDifferences.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <qwt_plot.h>

#include <memory>
#include <typeinfo>
#include <vector>

namespace {

/// The class that a member's object really has.
template <typename Class> const std::type_info& typeOf(const Class* object)
{
    return typeid(*object);
}

enum class Kind
{
    Any,
    Object,
    Widget
};

/// One member of the form as it has to be, and how to reach what is there.
struct Member
{
    const char* name;
    const char* parent;
    Kind kind;
    const std::type_info& type;
    const std::type_info& (*actualType)(const Ui_CFFCUtility&);
    const void* (*place)(const Ui_CFFCUtility&);
    QObject* (*object)(const Ui_CFFCUtility&);
    QWidget* (*fresh)(QWidget*);
    QStringList settings; ///< properties that the form sets, sorted
};

/// Compiles for a member that is declared as a pointer to `Class` itself and to no other class.
template <typename Class, Class* Ui_CFFCUtility::*pointer>
Member member(const char* name, const char* parent, const QStringList& settings = {})
{
    return {name,
            parent,
            std::is_base_of_v<QWidget, Class>   ? Kind::Widget
            : std::is_base_of_v<QObject, Class> ? Kind::Object
                                                : Kind::Any,
            typeid(Class),
            [](const Ui_CFFCUtility& ui) -> const std::type_info& { return typeOf(ui.*pointer); },
            [](const Ui_CFFCUtility& ui) -> const void* { return &(ui.*pointer); },
            [](const Ui_CFFCUtility& ui) -> QObject* {
                if constexpr (std::is_base_of_v<QObject, Class>)
                    return ui.*pointer;
                return nullptr;
            },
            [](QWidget* parentWidget) -> QWidget* {
                if constexpr (std::is_base_of_v<QWidget, Class>)
                    return new Class(parentWidget);
                return nullptr;
            },
            settings};
}

#define MEMBER(Class, name, ...) member<Class, &Ui_CFFCUtility::name>(#name, __VA_ARGS__)

/// All members in their order.
const std::vector<Member>& members()
{
    static const std::vector<Member> all{
        MEMBER(QWidget, wSettings, "CFFCUtility"),
        MEMBER(QHBoxLayout, horizontalLayout, "wSettings"),
        MEMBER(QLabel, lTitle, "wSettings", {"text"}),
        MEMBER(QLineEdit, lETitle, "wSettings"),
        MEMBER(QLabel, lCamera, "wSettings", {"text"}),
        MEMBER(QLineEdit, lECamera, "wSettings"),
        MEMBER(QPushButton, pBSave, "wSettings", {"text"}),
        MEMBER(QSpacerItem, settingsSpacer1, "horizontalLayout"),
        MEMBER(QCheckBox, chBNormFFC, "wSettings", {"checked", "minimumSize", "minimumWidth", "text"}),
        MEMBER(QLineEdit, lENormFFC, "wSettings",
               {"cursorPosition", "displayText", "inputMethodHints", "text"}),
        MEMBER(QPushButton, pBUpdate, "wSettings", {"text"}),
        MEMBER(QCheckBox, chBShowY, "wSettings", {"text"}),
        MEMBER(QSpacerItem, settingsSpacer2, "horizontalLayout"),
        MEMBER(QCheckBox, chBHighlights, "wSettings", {"minimumSize", "minimumWidth", "text"}),
        MEMBER(QSpacerItem, settingsSpacer3, "horizontalLayout"),
        MEMBER(QLabel, lblPrecision, "wSettings", {"text"}),
        MEMBER(QComboBox, cBoxPrecision, "wSettings", {"count", "currentIndex", "currentText", "sizePolicy"}),
        MEMBER(QLineEdit, lECurColor, "wSettings", {"enabled", "palette"}),
        MEMBER(QLineEdit, lECurPos, "wSettings", {"enabled", "palette"}),
        MEMBER(QwtPlot, PlotUp, "CFFCUtility", {"frameShape", "frameWidth"}),
        MEMBER(QwtPlot, PlotDown, "CFFCUtility", {"frameShape", "frameWidth"}),
        MEMBER(DisplayView, gVUp, "CFFCUtility", {"frameShape", "frameWidth", "mouseTracking"}),
        MEMBER(DisplayView, gVDown, "CFFCUtility", {"frameShape", "frameWidth", "mouseTracking"}),
    };
    return all;
}

} // namespace

/// The members of the form: their classes, parents and order, and that nothing is set beyond what they need.
class TestFormMembers : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everyMemberIsOfItsClassItself_data() { addRows(Kind::Any); }
    void everyMemberIsOfItsClassItself();
    void everyMemberHasItsNameAndParent_data() { addRows(Kind::Object); }
    void everyMemberHasItsNameAndParent();
    void membersAreInTheirOrder();
    void theDialogHasNoOtherChildren();
    void nothingElseIsSet_data() { addRows(Kind::Widget); }
    void nothingElseIsSet();
    void nothingElseIsSetOnTheDialog();
    void theUtilitySetsNoMore_data() { addRows(Kind::Widget); }
    void theUtilitySetsNoMore();

private:
    /// A row for each member that is of that kind at least.
    static void addRows(Kind kind);

    std::unique_ptr<QDialog> m_dialog;
    Ui_CFFCUtility m_ui;
};

void TestFormMembers::init()
{
    m_dialog = std::make_unique<QDialog>();
    m_ui.setupUi(m_dialog.get());
}

void TestFormMembers::cleanup()
{
    m_dialog.reset();
}

void TestFormMembers::addRows(Kind kind)
{
    QTest::addColumn<int>("number");
    for (std::size_t i = 0; i < members().size(); ++i) {
        if (members().at(i).kind >= kind)
            QTest::newRow(members().at(i).name) << int(i);
    }
}

void TestFormMembers::everyMemberIsOfItsClassItself()
{
    QFETCH(int, number);
    const Member& member = members().at(std::size_t(number));
    QCOMPARE(member.actualType(m_ui).name(), member.type.name());
    QVERIFY(member.actualType(m_ui) == member.type);
}

void TestFormMembers::everyMemberHasItsNameAndParent()
{
    QFETCH(int, number);
    const Member& member = members().at(std::size_t(number));
    QObject* object = member.object(m_ui);
    QCOMPARE(m_dialog->findChildren<QObject*>(QLatin1String(member.name)), QList<QObject*>{object});
    QCOMPARE(object->parent()->objectName(), QString(QLatin1String(member.parent)));
}

void TestFormMembers::membersAreInTheirOrder()
{
    const auto* place = static_cast<const char*>(static_cast<const void*>(&m_ui));
    for (const Member& member : members()) {
        QVERIFY2(member.place(m_ui) == place, member.name);
        place += sizeof(void*);
    }
    QCOMPARE(sizeof(Ui_CFFCUtility), members().size() * sizeof(void*));
}

// The order of the children is the order of the keyboard focus.
void TestFormMembers::theDialogHasNoOtherChildren()
{
    QObjectList expected, expectedInStrip;
    for (const Member& member : members()) {
        if (QObject* object = member.object(m_ui))
            (object->parent() == m_dialog.get() ? expected : expectedInStrip).append(object);
    }
    QCOMPARE(m_dialog->children(), expected);
    QCOMPARE(m_ui.wSettings->children(), expectedInStrip);
}

void TestFormMembers::nothingElseIsSet()
{
    QFETCH(int, number);
    const Member& member = members().at(std::size_t(number));
    const auto* widget = static_cast<QWidget*>(member.object(m_ui));
    // A twin in the same surroundings, as its class makes it.
    QDialog dialog;
    dialog.setWindowIcon(m_dialog->windowIcon());
    auto* strip = new QWidget(&dialog);
    const QWidget* twin = member.fresh(widget->parentWidget() == m_ui.wSettings ? strip : &dialog);
    QCOMPARE(propertyDifferences(widget, twin), member.settings);
}

void TestFormMembers::nothingElseIsSetOnTheDialog()
{
    const QDialog twin;
    QCOMPARE(propertyDifferences(m_dialog.get(), &twin),
             (QStringList{"minimumHeight", "minimumSize", "minimumWidth", "windowIcon", "windowTitle"}));
}

// The dialog of the utility fixes the strip's height and leaves all other members as the form makes them.
void TestFormMembers::theUtilitySetsNoMore()
{
    QFETCH(int, number);
    const Member& member = members().at(std::size_t(number));
    const QObject* object = member.object(m_ui);
    const DialogProbe utility;
    QStringList set;
    if (object == m_ui.wSettings)
        set = QStringList{"maximumHeight", "maximumSize", "minimumHeight", "minimumSize"};
    QCOMPARE(propertyDifferences(object, member.object(utility.ui)), set);
}

QTEST_MAIN(TestFormMembers)
#include "tst_form_members.moc"
