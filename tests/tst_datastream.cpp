#include <VeskData>

#include <QtTest/QtTest>

#include <functional>

namespace {

// A contact kind with one presence type, for the presences in the samples.
VeskBuddyType makeKind()
{
    VeskBuddyType kind(QStringLiteral("proto"), QStringLiteral("Proto"));
    auto* online = new VeskPresenceType;
    online->id = QStringLiteral("online");
    kind.data()->presences.insert(online->id, online);
    kind.data()->presenceList.append(online);
    return kind;
}

VeskPresenceType* onlineOf(VeskBuddyType const& kind)
{
    return kind.data()->presences.value(QStringLiteral("online"));
}

// Every field member set away from its default, so that a member the
// stream drops shows up.
VeskField spinBox()
{
    VeskField field = VeskField::spinBox(QStringLiteral("Port"), QStringLiteral("port"), 100, -3,
                                         42, QStringLiteral("net"), QStringLiteral(" s"));
    field.setReadOnly(true);
    field.setVisible(false);
    return field;
}

QList<VeskField> sampleFields()
{
    VeskField combo = VeskField::comboBox(
        QStringLiteral("Mode"), QStringLiteral("mode"), {QStringLiteral("a"), QStringLiteral("b")},
        {QStringLiteral("A"), QStringLiteral("B")}, QStringLiteral("b"), QString());
    VeskField check = VeskField::checkBox(QStringLiteral("Away"), QStringLiteral("away"), true,
                                          QString(), {QStringLiteral("mode")});
    check.setPressed(true);
    return {spinBox(), combo, check,
            VeskField::doubleSpinBox(QStringLiteral("Gain"), QStringLiteral("gain"), 2.5, -1.25,
                                     0.1, QString()),
            VeskField::passwordEdit(QStringLiteral("Pass"), QStringLiteral("pass"),
                                    QStringLiteral("secret"), 16, QString()),
            VeskField::image(QStringLiteral("pic"), QByteArray("\x89PNG\0", 5), QString()),
            VeskField::label(QStringLiteral("Hello"), QStringLiteral("hello"), QString()),
            VeskField()};
}

// One value of every type a stream carries.
QList<VeskArg> writableArgs(VeskBuddyType const& kind)
{
    VeskVideoClip clip;
    clip.value1 = 1;
    clip.value2 = 2;
    clip.value3 = 3;
    clip.value4 = -4;
    clip.text = QStringLiteral("clip");
    VeskTextFormat format;
    format.number1 = 1;
    format.number4 = -4;
    format.string1 = QStringLiteral("bold");
    VeskService const service(QStringLiteral("search"), QStringLiteral("two"), QStringLiteral("three"),
                              QStringLiteral("proto"), VeskPluginAction());
    VeskXmlNode node(QStringLiteral("root"), QStringLiteral("a < b"));
    node.addChild(QStringLiteral("child")).setAttribute(QStringLiteral("n"), 5);
    return {VeskArg(),
            VeskArg(char(-3)),
            VeskArg((unsigned char)250),
            VeskArg(-70000),
            VeskArg(4000000000u),
            VeskArg(-(1LL << 50)),
            VeskArg(~0ULL),
            VeskArg(-0.1f),
            VeskArg(1.0 / 3.0),
            VeskArg(QStringLiteral("üñï")),
            VeskArg(QByteArray("\0\1\2", 3)),
            VeskArg(QStringList{QString(), QStringLiteral("b")}),
            VeskArg(false),
            VeskArg(spinBox()),
            VeskArg(sampleFields()),
            VeskArg(node),
            VeskArg(VeskPresence(onlineOf(kind), QStringLiteral("here"))),
            VeskArg(VeskPresence(nullptr, QStringLiteral("no type"))),
            VeskArg(clip),
            VeskArg(QList<VeskArg>{VeskArg(1), VeskArg(QList<VeskArg>{VeskArg(), VeskArg(true)})}),
            VeskArg(service),
            VeskArg(QList<VeskService>{service, VeskService()}),
            VeskArg(QList<VeskTextFormat>{format, VeskTextFormat()})};
}

// What equality leaves out: a field's group, suffix and flags, a service's
// two texts, a clip's first value and a node's identity.
void compareDetails(VeskArg const& read, VeskArg const& written)
{
    switch (written.getType()) {
    case VeskArg::Field:
    case VeskArg::FieldList: {
        QList<VeskField> const a = read.getType() == VeskArg::Field ? QList<VeskField>{read.toField()}
                                                                   : read.toFieldList();
        QList<VeskField> const b = written.getType() == VeskArg::Field
                                       ? QList<VeskField>{written.toField()}
                                       : written.toFieldList();
        QCOMPARE(a, b);
        for (int i = 0; i < a.size(); ++i) {
            QCOMPARE(a[i].getGroup(), b[i].getGroup());
            QCOMPARE(a[i].getSuffix(), b[i].getSuffix());
            QCOMPARE(a[i].getComboBoxLabels(), b[i].getComboBoxLabels());
            QCOMPARE(a[i].getVisible(), b[i].getVisible());
            QCOMPARE(a[i].isReadOnly(), b[i].isReadOnly());
            QCOMPARE(a[i].isPressed(), b[i].isPressed());
        }
        break;
    }
    case VeskArg::Service:
        QCOMPARE(read.toService().text1, written.toService().text1);
        QCOMPARE(read.toService().text2, written.toService().text2);
        break;
    case VeskArg::VideoClip:
        QCOMPARE(read.toVideoClip().value1, written.toVideoClip().value1);
        break;
    case VeskArg::XmlNode:
        QCOMPARE(read.toXmlNode().toString(), written.toXmlNode().toString());
        break;
    default:
        QCOMPARE(read, written);
    }
}

QByteArray written(QList<VeskArg> const& args, QDataStream::Version version)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(version);
    for (VeskArg const& arg : args)
        out << arg;
    return out.status() == QDataStream::Ok ? bytes : QByteArray();
}

} // namespace

class TestDataStream : public QObject
{
    Q_OBJECT

private slots:
    void roundTrip_data();
    void roundTrip();
    void unwritableValues();
    void truncatedAtEveryByte();
    void corruptInput();
    void failedStreamsAreLeftAlone();
    void presencesNeedTheirKind();
    void variantsAndLists();
};

void TestDataStream::roundTrip_data()
{
    QTest::addColumn<int>("version");
    QTest::newRow("Qt 5.15") << int(QDataStream::Qt_5_15);
    QTest::newRow("this Qt") << int(QDataStream::Qt_DefaultCompiledVersion);
}

void TestDataStream::roundTrip()
{
    QFETCH(int, version);
    VeskBuddyType const kind = makeKind();
    QList<VeskArg> const args = writableArgs(kind);
    QByteArray const bytes = written(args, QDataStream::Version(version));
    QVERIFY(!bytes.isEmpty());

    QDataStream in(bytes);
    in.setVersion(version);
    VeskPresenceStreamKind scope(in, kind);
    for (VeskArg const& expected : args) {
        VeskArg read(123); // reading replaces a value of another type
        in >> read;
        QCOMPARE(in.status(), QDataStream::Ok);
        QCOMPARE(read.getType(), expected.getType());
        compareDetails(read, expected);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(expected.getTypeName()));
    }
    QVERIFY(in.atEnd());

    // Bit patterns, whatever precision the stream is set to.
    QByteArray single;
    QDataStream out(&single, QIODevice::WriteOnly);
    out.setFloatingPointPrecision(QDataStream::SinglePrecision);
    out << VeskArg(1.0 / 3.0);
    QDataStream back(single);
    VeskArg third;
    back >> third;
    QCOMPARE(third.toDouble(), 1.0 / 3.0);
}

void TestDataStream::unwritableValues()
{
    VeskPlugin plugin;
    VeskAccountConnection account;
    VeskGuiEventsReceiver receiver;
    VeskBuddyResourceType phone(QStringLiteral("phone"), QString());
    int pointee = 0;
    QList<VeskArg> const refused = {VeskArg(static_cast<void*>(&pointee)),
                                    VeskArg(QList<void*>{}),
                                    VeskArg(&plugin),
                                    VeskArg(&account),
                                    VeskArg(&receiver),
                                    VeskArg(VeskBuddyGroup(QStringLiteral("g"))),
                                    VeskArg(VeskBuddyResource(&phone, VeskPresence())),
                                    VeskArg(VeskPluginAction()),
                                    VeskArg(QList<VeskArg>{VeskArg(1), VeskArg(&plugin)})};
    for (VeskArg const& arg : refused) {
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << arg;
        QVERIFY2(out.status() == QDataStream::WriteFailed, qPrintable(arg.getTypeName()));
        QVERIFY(bytes.isEmpty());
        out << VeskArg(1); // a failed stream stays failed and writes nothing more
        QVERIFY(bytes.isEmpty());
        QDataStream listOut(&bytes, QIODevice::WriteOnly);
        listOut << QList<VeskArg>{VeskArg(2), arg};
        QVERIFY(listOut.status() == QDataStream::WriteFailed && bytes.isEmpty());
    }

    // Lists nest only so deep, in both directions.
    VeskArg deep(1);
    for (int i = 0; i < 64; ++i) {
        VeskArg wrapped(QList<VeskArg>{deep});
        deep.swap(wrapped);
    }
    QVERIFY(!written({deep}, QDataStream::Qt_DefaultCompiledVersion).isEmpty());
    QVERIFY(written({VeskArg(QList<VeskArg>{deep})}, QDataStream::Qt_DefaultCompiledVersion).isEmpty());
}

// Every proper prefix of a valid stream fails to read, and leaves None.
void TestDataStream::truncatedAtEveryByte()
{
    VeskBuddyType const kind = makeKind();
    for (int version : {int(QDataStream::Qt_5_15), int(QDataStream::Qt_DefaultCompiledVersion)}) {
        QByteArray const bytes =
            written({VeskArg(writableArgs(kind).mid(1))}, QDataStream::Version(version));
        QVERIFY(bytes.size() > 300);
        for (int cut = 0; cut < bytes.size(); ++cut) {
            QDataStream in(bytes.left(cut));
            in.setVersion(version);
            VeskPresenceStreamKind scope(in, kind);
            VeskArg read(1);
            in >> read;
            QVERIFY2(in.status() != QDataStream::Ok, qPrintable(QString::number(cut)));
            QCOMPARE(read.getType(), VeskArg::None);
        }
    }
}

void TestDataStream::corruptInput()
{
    auto read = [](auto const& writeHeader) {
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        writeHeader(out);
        out.writeRawData("\0\0\0\0\0\0\0\0", 8);
        QDataStream in(bytes);
        VeskArg arg(1);
        in >> arg;
        return qMakePair(int(in.status()), int(arg.getType()));
    };
    auto const corrupt = qMakePair(int(QDataStream::ReadCorruptData), int(VeskArg::None));
    // An unknown version, type numbers that are never written or name no type.
    QCOMPARE(read([](QDataStream& s) { s << quint8(2) << qint32(VeskArg::Int); }), corrupt);
    QCOMPARE(read([](QDataStream& s) { s << quint8(0) << qint32(VeskArg::Int); }), corrupt);
    for (qint32 type : {13, 15, 19, 20, 22, 24, 30, 31, -1})
        QCOMPARE(read([type](QDataStream& s) { s << quint8(1) << type; }), corrupt);
    // A bool that is neither 0 nor 1, a field of an unknown kind, a node
    // whose text is not XML.
    QCOMPARE(read([](QDataStream& s) { s << quint8(1) << qint32(VeskArg::Bool) << quint8(2); }), corrupt);
    QCOMPARE(read([](QDataStream& s) { s << quint8(1) << qint32(VeskArg::Field) << quint8(1) << qint32(15); }),
             corrupt);
    QCOMPARE(read([](QDataStream& s) {
                 s << quint8(1) << qint32(VeskArg::XmlNode) << quint8(1) << QStringLiteral("<a>");
             }),
             corrupt);
    // A field whose flag byte, the last one, has a bit past the three flags.
    QByteArray field;
    QDataStream fieldOut(&field, QIODevice::WriteOnly);
    fieldOut << VeskArg(VeskField::label(QString(), QStringLiteral("l"), QString()));
    field[field.size() - 1] = char(8);
    QCOMPARE(read([&field](QDataStream& s) { s.writeRawData(field.constData(), int(field.size())); }), corrupt);
    // A node in a format version this library does not know.
    for (quint8 version : {0, 2})
        QCOMPARE(read([version](QDataStream& s) {
                     s << quint8(1) << qint32(VeskArg::XmlNode) << version << QStringLiteral("<a/>");
                 }),
                 corrupt);
    // Trees are walked recursively, so nodes nest only so deep.
    for (int depth : {256, 257}) {
        QString const text = QStringLiteral("<a>").repeated(depth) + QStringLiteral("</a>").repeated(depth);
        auto const result = read([&text](QDataStream& s) {
            s << quint8(1) << qint32(VeskArg::XmlNode) << quint8(1) << text;
        });
        QCOMPARE(result, depth == 256 ? qMakePair(int(QDataStream::Ok), int(VeskArg::XmlNode)) : corrupt);
    }
    // Counts larger than the bytes left are refused before anything is
    // allocated for them.
    for (qint32 type : {VeskArg::StringList, VeskArg::ArgList})
        QCOMPARE(read([type](QDataStream& s) { s << quint8(1) << type << quint32(0xfffffff0); }), corrupt);
    QCOMPARE(read([](QDataStream& s) {
                 s << quint8(1) << qint32(VeskArg::FieldList) << quint8(1) << quint32(9);
             }),
             corrupt);
    // Nesting deeper than any writer makes.
    QCOMPARE(read([](QDataStream& s) {
                 for (int i = 0; i < 100; ++i)
                     s << quint8(1) << qint32(VeskArg::ArgList) << quint32(1);
             }),
             corrupt);
}

// Each operator leaves a stream that has already failed as it is: nothing is
// written, nothing is read, and the value read into is emptied.
void TestDataStream::failedStreamsAreLeftAlone()
{
    VeskXmlNode const node(QStringLiteral("root"), QStringLiteral("text"));
    QList<std::function<void(QDataStream&)>> const writers = {
        [](QDataStream& s) { s << VeskArg(1); },
        [](QDataStream& s) { s << QList<VeskArg>{VeskArg(1)}; },
        [](QDataStream& s) { s << spinBox(); },
        [](QDataStream& s) { s << sampleFields(); },
        [&node](QDataStream& s) { s << node; },
        [](QDataStream& s) { s << VeskPresence(nullptr, QStringLiteral("away")); },
    };
    QByteArray valid;
    QDataStream out(&valid, QIODevice::WriteOnly);
    for (auto const& write : writers) {
        write(out);
        QByteArray bytes;
        QDataStream failed(&bytes, QIODevice::WriteOnly);
        failed.setStatus(QDataStream::WriteFailed);
        write(failed);
        QVERIFY(bytes.isEmpty());
    }
    QCOMPARE(out.status(), QDataStream::Ok);

    QDataStream in(valid);
    in.setStatus(QDataStream::ReadCorruptData);
    VeskArg arg(2);
    QList<VeskArg> args{VeskArg(2)};
    VeskField field = spinBox();
    QList<VeskField> fields = sampleFields();
    VeskXmlNode nodeBack = node;
    VeskPresence presence(nullptr, QStringLiteral("here"));
    in >> arg >> args >> field >> fields >> nodeBack >> presence;
    QCOMPARE(arg.getType(), VeskArg::None);
    QVERIFY(args.isEmpty());
    QVERIFY(field.isNull());
    QVERIFY(fields.isEmpty());
    QVERIFY(nodeBack.isNull());
    QVERIFY(presence.getDescription().isNull());
    QCOMPARE(in.device()->pos(), 0);
}

void TestDataStream::presencesNeedTheirKind()
{
    VeskBuddyType const kind = makeKind();
    VeskBuddyType const other(QStringLiteral("other"), QStringLiteral("Other"));
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << VeskPresence(onlineOf(kind), QStringLiteral("here"));

    VeskPresence presence;
    {
        QDataStream in(bytes);
        QDataStream elsewhere;
        VeskPresenceStreamKind outer(in, kind);
        VeskPresenceStreamKind inner(elsewhere, other); // another stream's scope does not count
        in >> presence;
        QCOMPARE(in.status(), QDataStream::Ok);
        QCOMPARE(presence.type, onlineOf(kind));
        QCOMPARE(presence.getDescription(), QStringLiteral("here"));
    }
    for (VeskBuddyType const& wrong : {VeskBuddyType(), other}) {
        QDataStream in(bytes);
        VeskPresenceStreamKind scope(in, wrong);
        in >> presence;
        QCOMPARE(in.status(), QDataStream::ReadCorruptData);
        QVERIFY(!presence.isValid());
    }
    QDataStream unscoped(bytes);
    unscoped >> presence;
    QCOMPARE(unscoped.status(), QDataStream::ReadCorruptData);
}

// The record lists have operators of their own, and a QVariant holding a
// library type streams through its registered operators.
void TestDataStream::variantsAndLists()
{
    QList<VeskField> const fields = sampleFields();
    QList<VeskArg> const args = {VeskArg(1), VeskArg(QStringLiteral("two"))};
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << fields << args << QVariant::fromValue(VeskArg(fields)) << QVariant::fromValue(fields);
    QCOMPARE(out.status(), QDataStream::Ok);

    QDataStream in(bytes);
    QList<VeskField> fieldsBack;
    QList<VeskArg> argsBack{VeskArg(true)};
    QVariant argVariant;
    QVariant fieldsVariant;
    in >> fieldsBack >> argsBack >> argVariant >> fieldsVariant;
    QCOMPARE(in.status(), QDataStream::Ok);
    QCOMPARE(fieldsBack, fields);
    QCOMPARE(argsBack, args);
    QCOMPARE(argVariant.value<VeskArg>(), VeskArg(fields));
    QCOMPARE(fieldsVariant.value<QList<VeskField>>(), fields);
}

QTEST_GUILESS_MAIN(TestDataStream)
#include "tst_datastream.moc"
