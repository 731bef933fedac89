#include <VeskData>

#include <QtTest/QtTest>

#include "vesktest.h"

#include <cmath>
#include <functional>
#include <limits>

namespace {

// Runs f, which must throw, and returns the exception's text.
QString conversionText(char const* actual, char const* wanted)
{
    return QStringLiteral("VeskArg: cannot convert VeskArg::%1 to VeskArg::%2")
        .arg(QLatin1String(actual), QLatin1String(wanted));
}

struct Tracked
{
    static int alive;
    Tracked() { ++alive; }
    ~Tracked() { --alive; }
};
int Tracked::alive = 0;

} // namespace

class TestArg : public QObject
{
    Q_OBJECT

private slots:
    void typeNumbersAndNames();
    void roundTrips();
    void strictConversionsThrow();
    void sharingAndTypeLock();
    void pointersAreNeverOwned();
    void equality();
    void mixedListsMoveTheirBytes();
    void recordTypes();
    void debugTexts();
};

void TestArg::typeNumbersAndNames()
{
    QCOMPARE(vesk_arg_type(VeskArg::None), QStringLiteral("VeskArg::None"));
    QCOMPARE(vesk_arg_type(VeskArg::VideoClip), QStringLiteral("VeskArg::VideoClip"));
    QCOMPARE(vesk_arg_type(VeskArg::Undefined), QStringLiteral("VeskArg::Undefined"));
    QCOMPARE(vesk_arg_type(VeskArg::Type(31)), QStringLiteral("VeskArg::Unknown"));
    QCOMPARE(vesk_arg_type(VeskArg::Type(-1)), QStringLiteral("VeskArg::Unknown"));
    QVERIFY(VeskArg().getTypeName().isNull());
    QCOMPARE(VeskArg(3u).getTypeName(), QStringLiteral("VeskArg::UInt"));

    // The types the debug texts below do not already show.
    VeskPlugin plugin;
    QObject object;
    QList<QPair<VeskArg, VeskArg::Type>> const made{
        {VeskArg(quint64(4)), VeskArg::UInt64}, {VeskArg(1.5), VeskArg::Double},
        {VeskArg(static_cast<void*>(nullptr)), VeskArg::Pointer},
        {VeskArg(static_cast<VeskAccountConnection*>(nullptr)), VeskArg::Account},
        {VeskArg(&plugin), VeskArg::Plugin}, {VeskArg(&object), VeskArg::Pointer}};
    for (auto const& pair : made)
        QCOMPARE(pair.first.getType(), pair.second);
}

void TestArg::roundTrips()
{
    char const high = char(200);
    QCOMPARE(VeskArg(high).toChar(), high);
    QCOMPARE(VeskArg(std::numeric_limits<unsigned int>::max()).toUInt(),
             std::numeric_limits<unsigned int>::max());
    QCOMPARE(VeskArg(std::numeric_limits<long long>::min()).toInt64(),
             std::numeric_limits<long long>::min());
    float const third = 1.0f / 3.0f;
    QCOMPARE(VeskArg(third).toFloat(), third);
    QCOMPARE(VeskArg(QByteArray("a\0b", 3)).toByteArray(), QByteArray("a\0b", 3));

    int target = 0;
    QList<void*> const pointers{&target, nullptr};
    QCOMPARE(VeskArg(pointers).toPointerList(), pointers);
    VeskAccountConnection account;
    VeskGuiEventsReceiver receiver;
    QCOMPARE(VeskArg(&account).toAccount(), &account);
    QCOMPARE(VeskArg(&receiver).toGuiEventsReceiver(), &receiver);

    // An argument list hands back handles on the very same records.
    double const nan = std::numeric_limits<double>::quiet_NaN();
    QList<VeskArg> const inner{VeskArg(nan), VeskArg("x")};
    QList<VeskArg> const back = VeskArg(inner).toArgList();
    QCOMPARE(back.size(), 2);
    QVERIFY(back.at(0) == inner.at(0)); // only a shared record makes NaN equal
    QVERIFY(VeskArg(nan) != inner.at(0));
}

void TestArg::strictConversionsThrow()
{
    // Every numeric type converts to itself only, never to a wider or narrower one, nor
    // between signed and unsigned, in either direction.
    struct Numeric
    {
        char const* name;
        VeskArg value;
        std::function<VeskArg(VeskArg const&)> convert;
    };
    Numeric const numerics[] = {
        {"Char", VeskArg(char(-56)), [](VeskArg const& a) { return VeskArg(a.toChar()); }},
        {"UChar", VeskArg((unsigned char)200), [](VeskArg const& a) { return VeskArg(a.toUChar()); }},
        {"Int", VeskArg(std::numeric_limits<int>::min()),
         [](VeskArg const& a) { return VeskArg(a.toInt()); }},
        {"UInt", VeskArg(std::numeric_limits<unsigned int>::max()),
         [](VeskArg const& a) { return VeskArg(a.toUInt()); }},
        {"Int64", VeskArg(std::numeric_limits<long long>::min()),
         [](VeskArg const& a) { return VeskArg(a.toInt64()); }},
        {"UInt64", VeskArg(std::numeric_limits<unsigned long long>::max()),
         [](VeskArg const& a) { return VeskArg(a.toUInt64()); }},
        {"Float", VeskArg(0.1f), [](VeskArg const& a) { return VeskArg(a.toFloat()); }},
        {"Double", VeskArg(0.1), [](VeskArg const& a) { return VeskArg(a.toDouble()); }},
    };
    for (Numeric const& from : numerics) {
        QCOMPARE(from.value.getTypeName(), QStringLiteral("VeskArg::") + QLatin1String(from.name));
        for (Numeric const& to : numerics) {
            if (&from == &to)
                QCOMPARE(to.convert(from.value), from.value);
            else
                QCOMPARE(thrownText([&] { to.convert(from.value); }),
                         conversionText(from.name, to.name));
        }
    }

    VeskArg const five(5);
    QCOMPARE(thrownText([&] { five.toUInt(); }), conversionText("Int", "UInt"));
    QCOMPARE(thrownText([&] { five.toDouble(); }), conversionText("Int", "Double"));
    QCOMPARE(five.toInt(), 5); // unchanged after the failures

    QCOMPARE(thrownText([] { VeskArg(QByteArray("x")).toString(); }),
             conversionText("ByteArray", "String"));
    QCOMPARE(thrownText([] { VeskArg("x").toByteArray(); }), conversionText("String", "ByteArray"));
    QCOMPARE(thrownText([] { VeskArg(char(200)).toUChar(); }), conversionText("Char", "UChar"));
    QCOMPARE(thrownText([] { VeskArg(static_cast<void*>(nullptr)).toPlugin(); }),
             conversionText("Pointer", "Plugin"));

    VeskArg const none;
    QCOMPARE(thrownText([&] { none.toString(); }), conversionText("None", "String"));
    QCOMPARE(thrownText([&] { none.toPluginAction(); }), conversionText("None", "PluginAction"));
}

void TestArg::sharingAndTypeLock()
{
    VeskArg value;
    value = VeskArg(1);
    QCOMPARE(value.getType(), VeskArg::Int);

    QCOMPARE(thrownText([&] { value = VeskArg("one"); }), conversionText("String", "Int"));
    QCOMPARE(thrownText([&] { value = VeskArg(); }), conversionText("None", "Int"));
    QCOMPARE(value.toInt(), 1);

    VeskArg const result = (value = VeskArg(3));
    QCOMPARE(result.toInt(), 3);

    VeskArg empty;
    empty = VeskArg();
    QCOMPARE(empty.getType(), VeskArg::None);

    // A copy outlives the handle it was made from.
    auto* first = new VeskArg(QStringLiteral("shared"));
    VeskArg const copy(*first);
    delete first;
    QCOMPARE(copy.toString(), QStringLiteral("shared"));

    VeskArg self(7);
    self = self;
    QCOMPARE(self.toInt(), 7);
}

void TestArg::pointersAreNeverOwned()
{
    auto* const object = new Tracked;
    QCOMPARE(Tracked::alive, 1);
    {
        VeskArg const single(static_cast<void*>(object));
        VeskArg const list(QList<void*>{object, object});
        VeskArg const nested(QList<VeskArg>{single, list});
    }
    QCOMPARE(Tracked::alive, 1);
    delete object;
}

void TestArg::equality()
{
    QVERIFY(VeskArg(5) == VeskArg(5));
    QVERIFY(VeskArg(5) != VeskArg(5u));
    QVERIFY(VeskArg(5) != VeskArg(qint64(5)));
    QVERIFY(VeskArg() == VeskArg());
    QVERIFY(VeskArg() != VeskArg(0));
    QVERIFY(VeskArg(0.0) == VeskArg(-0.0));
    double const nan = std::nan("");
    VeskArg const nanValue(nan);
    QVERIFY(VeskArg(nan) != VeskArg(nan));
    QVERIFY(nanValue == VeskArg(nanValue));

    int target = 0;
    void* const address = &target;
    QVERIFY(VeskArg(address) == VeskArg(address));
    QVERIFY(VeskArg(address) != VeskArg(static_cast<VeskPlugin*>(address)));

    QList<VeskArg> const oneText{VeskArg(1), VeskArg("t")};
    QVERIFY(VeskArg(oneText) == VeskArg(QList<VeskArg>{VeskArg(1), VeskArg("t")}));
    QVERIFY(VeskArg(oneText) != VeskArg(QList<VeskArg>{VeskArg("t"), VeskArg(1)}));
    QVERIFY(VeskArg(oneText) != VeskArg(QList<VeskArg>{VeskArg(1)}));
    QVERIFY(VeskArg(QList<VeskArg>{VeskArg(oneText)}) == VeskArg(QList<VeskArg>{VeskArg(oneText)}));

    VeskPlugin plugin;
    VeskPluginAction const a(&plugin, nullptr, {VeskArg(1)});
    VeskPluginAction const b(&plugin, nullptr, {VeskArg(2)});
    QVERIFY(VeskArg(a) == VeskArg(VeskPluginAction(a)));
    QVERIFY(VeskArg(a) != VeskArg(b));
    QVERIFY(VeskArg(QStringList{QStringLiteral("x")}) != VeskArg(QStringList()));
    QVERIFY(VeskArg(QByteArray("ab")) != VeskArg(QByteArray("abc")));
}

void TestArg::mixedListsMoveTheirBytes()
{
    QList<VeskArg> list{VeskArg(1), VeskArg("two"), VeskArg(3.0), VeskArg(true)};
    list.insert(1, VeskArg(QByteArray("inserted")));
    list.removeAt(2);
    list.insert(0, VeskArg('c'));
    list.move(4, 1);
    list.removeFirst();
    QCOMPARE(list.size(), 4);
    QCOMPARE(list.at(0).toBool(), true);
    QCOMPARE(list.at(1).toInt(), 1);
    QCOMPARE(list.at(2).toByteArray(), QByteArray("inserted"));
    QCOMPARE(list.at(3).toDouble(), 3.0);
}

void TestArg::recordTypes()
{
    VeskVideoClip clip;
    clip.value1 = 1;
    clip.text = QStringLiteral("clip");
    VeskVideoClip otherFirst = clip;
    otherFirst.value1 = 99;
    QVERIFY(VeskArg(clip) == VeskArg(otherFirst));
    for (int member = 0; member < 4; ++member) {
        VeskVideoClip other = clip;
        switch (member) {
        case 0: other.value2 = 7; break;
        case 1: other.value3 = 7; break;
        case 2: other.value4 = 7; break;
        default: other.text = QStringLiteral("other"); break;
        }
        QVERIFY2(VeskArg(clip) != VeskArg(other), qPrintable(QString::number(member)));
    }
    QCOMPARE(VeskArg(clip).toVideoClip().value1, 1u);
    VeskVideoClip const unset;
    QVERIFY(unset.value1 == 0 && unset.value2 == 0 && unset.value3 == 0 && unset.value4 == 0);

    VeskPlugin plugin;
    VeskService const chat(QStringLiteral("chat"), QString(), QString(), QStringLiteral("proto"),
                           VeskPluginAction());
    VeskService const sameChat(QStringLiteral("chat"), QStringLiteral("b"), QStringLiteral("c"),
                               QStringLiteral("proto"), VeskPluginAction(&plugin, nullptr, {}));
    QVERIFY(VeskArg(chat) == VeskArg(sameChat));
    QVERIFY(VeskArg(QList<VeskService>{chat}) == VeskArg(QList<VeskService>{sameChat}));
    QVERIFY(VeskArg(QList<VeskService>()).toServiceList().isEmpty());
    QCOMPARE(VeskArg(sameChat).toService().text1, QStringLiteral("c"));

    VeskTextFormat format;
    format.string2 = QStringLiteral("bold");
    VeskTextFormat changed = format;
    changed.number4 = 1;
    QVERIFY(VeskArg(QList<VeskTextFormat>{format}) != VeskArg(QList<VeskTextFormat>{changed}));
    QCOMPARE(VeskArg(QList<VeskTextFormat>{format}).toTextFormatList().at(0).string2,
             QStringLiteral("bold"));

    auto checkBox = [](bool checked) {
        return VeskField::checkBox(QStringLiteral("Remember me"), QStringLiteral("remember"), checked,
                                   QString(), QStringList());
    };
    VeskField const box = checkBox(true);
    VeskField const sameBox = checkBox(true);
    QVERIFY(VeskArg(box) == VeskArg(sameBox));
    QVERIFY(VeskArg(box) != VeskArg(checkBox(false)));
    QCOMPARE(VeskArg(box).toField().getId(), QStringLiteral("remember"));
    QCOMPARE(VeskArg(QList<VeskField>{box, sameBox}).toFieldList().size(), 2);
    QCOMPARE(thrownText([&] { VeskArg(QList<VeskField>{box}).toField(); }),
             conversionText("FieldList", "Field"));

    // Entries are compared by identity, and a value sees later changes.
    VeskBuddyGroup const group(QStringLiteral("Friends"));
    VeskArg const groupValue(group);
    QVERIFY(groupValue == VeskArg(VeskBuddyGroup(group)));
    QVERIFY(groupValue != VeskArg(VeskBuddyGroup(QStringLiteral("Friends"))));
    VeskBuddyGroup(group).setUnreadMessages(4);
    QCOMPARE(groupValue.toBuddy().unreadMessages(), 4);
    QCOMPARE(thrownText([] { VeskArg(VeskPresence()).toBuddy(); }), conversionText("Presence", "Buddy"));

    VeskPresenceType online;
    VeskPresenceType away;
    QVERIFY(VeskArg(VeskPresence(&online, QStringLiteral("here"))) == VeskArg(VeskPresence(&online, QStringLiteral("here"))));
    QVERIFY(VeskArg(VeskPresence(&online, QStringLiteral("here"))) != VeskArg(VeskPresence(&away, QStringLiteral("here"))));
    VeskBuddyResourceType phone(QStringLiteral("phone"), QString());
    VeskBuddyResource const resource(&phone, VeskPresence(&online, QString()));
    QVERIFY(VeskArg(resource) == VeskArg(VeskBuddyResource(&phone, VeskPresence(&away, QString()))));
    QCOMPARE(VeskArg(resource).toBuddyResource().getName(), QStringLiteral("phone"));

    VeskXmlNode const node(QStringLiteral("field"));
    QVERIFY(VeskArg(node) == VeskArg(node));
    QVERIFY(VeskArg(node) != VeskArg(VeskXmlNode(QStringLiteral("field"))));
    QCOMPARE(VeskArg(node).toXmlNode(), node);
    QCOMPARE(thrownText([&] { VeskArg(node).toService(); }), conversionText("XmlNode", "Service"));
    QCOMPARE(thrownText([] { VeskArg(QList<VeskService>()).toService(); }),
             conversionText("ServiceList", "Service"));
}

void TestArg::debugTexts()
{
    // Every scalar type, at values where a wrong cast would show.
    QPair<VeskArg, char const*> const scalars[] = {
        {VeskArg(), "None"},
        {VeskArg(5), "Int: 5"},
        {VeskArg('A'), "Char: A"},
        {VeskArg(static_cast<unsigned char>(200)), "UChar: 200"},
        {VeskArg(4294967295u), "UInt: 4294967295"},
        {VeskArg(-1099511627776LL), "Int64: -1099511627776"},
        {VeskArg(18446744073709551615ULL), "UInt64: 18446744073709551615"},
        {VeskArg(0.5f), "Float: 0.5"},
        {VeskArg(-2.25), "Double: -2.25"},
        {VeskArg(1e300), "Double: 1e+300"}, // beyond float
        {VeskArg(false), "Bool: false"},
        {VeskArg("a \"b\"\n"), "String: \"a \"b\"\n\""},
        {VeskArg(QByteArray("ab")), "ByteArray:\"ab\""},
        {VeskArg(static_cast<void*>(nullptr)), "Pointer: 0x0"},
        {VeskArg(static_cast<VeskAccountConnection*>(nullptr)), "Account: 0x0"},
    };
    for (auto const& row : scalars)
        QCOMPARE(debugText(row.first), QStringLiteral("VeskArg(%1) ").arg(QString::fromUtf8(row.second)));
    QCOMPARE(debugText(VeskArg(QStringList{QStringLiteral("a"), QStringLiteral("b")})),
             QStringLiteral("VeskArg(StringList: (\"a\", \"b\") ) "));
    QCOMPARE(debugText(VeskArg(QList<void*>{nullptr})), QStringLiteral("VeskArg(PointerList: (0x0) ) "));
    QCOMPARE(debugText(VeskArg(QList<VeskArg>{VeskArg(1), VeskArg(2)})),
             QStringLiteral("VeskArg(ArgList: (VeskArg(Int: 1) ,  VeskArg(Int: 2) )  ) "));
    QCOMPARE(debugText(VeskArg(QList<VeskArg>())), QStringLiteral("VeskArg(ArgList: () ) "));
    QCOMPARE(debugText(VeskArg(QList<VeskArg>{VeskArg(QList<VeskArg>{VeskArg(1)})})),
             QStringLiteral("VeskArg(ArgList: (VeskArg(ArgList: (VeskArg(Int: 1) )  ) )  ) "));

    VeskPlugin plugin;
    QString const address = debugText(static_cast<void const*>(&plugin));
    QCOMPARE(debugText(VeskArg(&plugin)), QStringLiteral("VeskArg(Plugin: %1) ").arg(address.trimmed()));
    QVERIFY(address.startsWith(QLatin1String("0x")));
    QCOMPARE(debugText(VeskArg(VeskPluginAction(&plugin, nullptr, {VeskArg(1), VeskArg(2)}))),
             QStringLiteral("VeskArg(PluginAction: argument count: 2) "));
    QCOMPARE(debugText(VeskArg(static_cast<VeskGuiEventsReceiver*>(nullptr))),
             QStringLiteral("VeskArg(GuiEventsReceiver) "));
    QCOMPARE(debugText(VeskArg(VeskVideoClip())), QStringLiteral("VeskArg(VideoClip) "));
    QCOMPARE(debugText(VeskArg(QList<VeskTextFormat>{VeskTextFormat()})),
             QStringLiteral("VeskArg(TextFormatList: ) "));
    QCOMPARE(debugText(VeskArg(QList<VeskService>())), QStringLiteral("VeskArg(ServiceList) "));
    QCOMPARE(debugText(VeskArg(VeskService(QStringLiteral("n"), QString(), QString(),
                                           QStringLiteral("p"), VeskPluginAction()))),
             QStringLiteral("VeskArg(Service: name=\"n\" protocol=\"p\" ) "));

    VeskField const label = VeskField::label(QStringLiteral("Text"), QStringLiteral("l"), QString());
    QCOMPARE(debugText(VeskArg(label)), QStringLiteral("VeskArg(Field: %1) ").arg(debugText(label)));
    QCOMPARE(debugText(VeskArg(QList<VeskField>{label})),
             QStringLiteral("VeskArg(FieldList: %1) ").arg(debugText(QList<VeskField>{label})));
    VeskXmlNode const node(QStringLiteral("n"));
    QCOMPARE(debugText(VeskArg(node)), QStringLiteral("VeskArg(XmlNode: VeskXmlNode(<n/>)) "));

    VeskBuddyGroup const group(QStringLiteral("Work"));
    QCOMPARE(debugText(VeskArg(group)), QStringLiteral("VeskArg(Buddy: %1) ").arg(debugText(VeskBuddy(group))));
    VeskPresenceType online;
    VeskPresence const presence(&online, QStringLiteral("at lunch"));
    QCOMPARE(debugText(VeskArg(presence)), QStringLiteral("VeskArg(Presence: %1) ").arg(debugText(presence)));
    VeskBuddyResourceType phone(QStringLiteral("phone"), QStringLiteral("phone.png"));
    QCOMPARE(debugText(VeskArg(VeskBuddyResource(&phone, presence))),
             QStringLiteral("VeskArg(BuddyResource:\"phone\") "));

    QCOMPARE(debugText(VeskArg::Int), QStringLiteral("VeskArg::Int "));
    QCOMPARE(debugText(VeskArg::VideoClip), QStringLiteral("VeskArg::VideClip "));
    QCOMPARE(debugText(VeskArg::Type(40)), QStringLiteral("VeskArg:: "));
    QCOMPARE(debugText(QList<VeskArg>{VeskArg(1)}), QStringLiteral("(VeskArg(Int: 1) )  "));
}

QTEST_APPLESS_MAIN(TestArg)
#include "tst_arg.moc"
