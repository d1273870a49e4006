#include "plugin/ZBKInterfacePlugIn.h"

#include <QTest>

namespace {

/// Notes which operation was reached, and with what.
class Recorder : public ZBKInterfacePlugIn
{
public:
    explicit Recorder(QStringList* calls)
        : m_calls(calls)
    {
    }
    ~Recorder() override { m_calls->append(QStringLiteral("destructor")); }

    int Init(ZBKHostCallback callback, void* context) override
    {
        return note(QStringLiteral("Init %1 %2").arg(callback == nullptr).arg(context == this), 21);
    }
    int Release() override { return note(QStringLiteral("Release"), 22); }
    int Show(bool visible) override { return note(QStringLiteral("Show %1").arg(visible), 23); }
    QString Name() override
    {
        note(QStringLiteral("Name"), 0);
        return QStringLiteral("a name");
    }
    int SetImage(_ZorImage* image) override
    {
        return note(QStringLiteral("SetImage %1").arg(image == nullptr), 24);
    }
    void SetHostInfo(ZBKHostInfo info) override { note(QStringLiteral("SetHostInfo ") + info.text, 0); }
    int Update() override { return note(QStringLiteral("Update"), 25); }
    int GetResult(void** result) override
    {
        return note(QStringLiteral("GetResult %1").arg(result == nullptr), 26);
    }
    bool HasResult() override { return note(QStringLiteral("HasResult"), 1) != 0; }
    void Reset() override { note(QStringLiteral("Reset"), 0); }

private:
    int note(const QString& call, int answer)
    {
        m_calls->append(call);
        return answer;
    }

    QStringList* m_calls;
};

/// Calls the operation at a position of the table as a host does that knows the position alone.
template <typename Result, typename... Arguments>
Result callAt(int position, ZBKInterfacePlugIn* object, Arguments... arguments)
{
    using Function = Result (*)(ZBKInterfacePlugIn*, Arguments...);
    void** table = *reinterpret_cast<void***>(object);
    return reinterpret_cast<Function>(table[position])(object, arguments...);
}

/// Of the base class: the bodies that it has itself.
class Plain : public Recorder
{
public:
    using Recorder::Recorder;
    QString Name() override { return ZBKInterfacePlugIn::Name(); }
    void SetHostInfo(ZBKHostInfo info) override { ZBKInterfacePlugIn::SetHostInfo(info); }
};

} // namespace

/// The interface by position: hosts are built against the order of its operations and of a record's fields.
class TestHostInterface : public QObject
{
    Q_OBJECT

private slots:
    void operationsAreInTheirOrder();
    void destructorIsFirst();
    void baseAnswersAreEmpty();
    void hostInfoHasItsPlaces();
};

void TestHostInterface::operationsAreInTheirOrder()
{
    QStringList calls;
    Recorder recorder(&calls);
    // Two entries, 0 and 1, belong to the destructor.
    QCOMPARE((callAt<int, ZBKHostCallback, void*>(2, &recorder, nullptr, &recorder)), 21);
    QCOMPARE((callAt<int>(3, &recorder)), 22);
    QCOMPARE((callAt<int, bool>(4, &recorder, true)), 23);
    QCOMPARE((callAt<QString>(5, &recorder)), QStringLiteral("a name"));
    QCOMPARE((callAt<int, _ZorImage*>(6, &recorder, nullptr)), 24);
    ZBKHostInfo info;
    info.text = QStringLiteral("bench");
    callAt<void, ZBKHostInfo>(7, &recorder, info);
    QCOMPARE((callAt<int>(8, &recorder)), 25);
    QCOMPARE((callAt<int, void**>(9, &recorder, nullptr)), 26);
    QVERIFY((callAt<bool>(10, &recorder)));
    callAt<void>(11, &recorder);
    QCOMPARE(calls, QStringList({"Init 1 1", "Release", "Show 1", "Name", "SetImage 1", "SetHostInfo bench",
                                 "Update", "GetResult 1", "HasResult", "Reset"}));
}

void TestHostInterface::destructorIsFirst()
{
    QStringList calls;
    auto* recorder = new Recorder(&calls);
    // The second of the two entries deletes as well.
    callAt<void>(1, recorder);
    QCOMPARE(calls, QStringList("destructor"));
}

void TestHostInterface::baseAnswersAreEmpty()
{
    QStringList calls;
    Plain plain(&calls);
    QVERIFY(plain.Name().isNull());
    plain.SetHostInfo(ZBKHostInfo());
    QVERIFY(calls.isEmpty());
}

void TestHostInterface::hostInfoHasItsPlaces()
{
    // The offsets are asserted beside the record; here the widths.
    QCOMPARE(sizeof(ZBKHostInfo), std::size_t{48});
    QCOMPARE(sizeof(ZBKHostInfo::leadingWords), std::size_t{12});
    QCOMPARE(sizeof(ZBKHostInfo::value), std::size_t{1});
    QCOMPARE(sizeof(ZBKHostInfo::trailingWords), std::size_t{24});
}

QTEST_APPLESS_MAIN(TestHostInterface)
#include "tst_host_interface.moc"
