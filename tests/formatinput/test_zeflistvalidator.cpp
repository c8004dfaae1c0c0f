#include <ZEFTest.h>

#include <ZEFListValidator.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString empty = u"%{list_empty_message}"_s;
const QString incomplete = u"%{list_incomplete_message}"_s;
const QString valid = u"%{list_valid_message}"_s;
const QString invalid = u"%{list_invalid_message}"_s;

QValidator::State validated(const ZEFListValidator& validator, QString text)
{
    int position = 0;
    return validator.validate(text, position);
}

} // namespace

class TestZEFListValidator : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void startsWithoutAnOutcome();
    void listsItsSignalsInOrder();
    void judges_data();
    void judges();
    void leavesTheCursorAlone();
    void settingTheMinimumDoesNotRevalidate();
    void announcesOnlyChanges();
    void announcesTheStateFirst();
    void aFirstInvalidChangesTheMessageOnly();
    void aNewMessageMayComeWithoutANewState();
    void aReceiverMayDeleteIt_data();
    void aReceiverMayDeleteIt();
    void keepsTheOutcomeOfAReceiver();
    void aSubclassCanRecordItsOwnOutcome();
    void doesNotFixUp();
};

void TestZEFListValidator::startsWithoutAnOutcome()
{
    QObject parent;
    const auto* validator = new ZEFListValidator(&parent, {u"AB12"_s});
    QCOMPARE(validator->parent(), &parent);
    QCOMPARE(validator->minimumLength(), 0L);
    QCOMPARE(validator->lastMessage(), QString());
}

void TestZEFListValidator::listsItsSignalsInOrder()
{
    const QMetaObject& meta = ZEFListValidator::staticMetaObject;
    QByteArrayList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods.append(meta.method(i).methodSignature());
    QCOMPARE(methods,
             (QByteArrayList{"validityMessageChanged(QString)", "validityChanged(QValidator::State)"}));
    QCOMPARE(meta.method(meta.methodOffset()).parameterNames(), QByteArrayList{"message"});
    QCOMPARE(meta.method(meta.methodOffset() + 1).parameterNames(), QByteArrayList{"validity"});
}

void TestZEFListValidator::judges_data()
{
    QTest::addColumn<long>("minimum");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QValidator::State>("state");
    QTest::addColumn<QString>("message");

    QTest::addRow("in the list") << 0L << u"AB12"_s << u"AB12"_s << QValidator::Acceptable << valid;
    QTest::addRow("with a hyphen") << 0L << u"AB-12"_s << u"AB12"_s << QValidator::Acceptable << valid;
    QTest::addRow("with hyphens everywhere")
        << 0L << u"--A-B1-2-"_s << u"AB12"_s << QValidator::Acceptable << valid;
    QTest::addRow("not in the list") << 0L << u"XY99"_s << u"XY99"_s << QValidator::Invalid << invalid;
    QTest::addRow("other letter case") << 0L << u"ab12"_s << u"ab12"_s << QValidator::Invalid << invalid;
    QTest::addRow("the beginning of an entry")
        << 0L << u"AB1"_s << u"AB1"_s << QValidator::Invalid << invalid;
    QTest::addRow("an entry with more behind it")
        << 0L << u"AB123"_s << u"AB123"_s << QValidator::Invalid << invalid;
    QTest::addRow("an entry with a hyphen is never met")
        << 0L << u"CD-34"_s << u"CD34"_s << QValidator::Invalid << invalid;
    QTest::addRow("empty") << 0L << u""_s << u""_s << QValidator::Intermediate << empty;
    QTest::addRow("empty, with a minimum") << 5L << u""_s << u""_s << QValidator::Intermediate << empty;
    QTest::addRow("only hyphens") << 5L << u"---"_s << u""_s << QValidator::Intermediate << empty;
    QTest::addRow("too short, although in the list")
        << 5L << u"AB12"_s << u"AB12"_s << QValidator::Intermediate << incomplete;
    QTest::addRow("hyphens do not count")
        << 5L << u"A-B-1-2"_s << u"AB12"_s << QValidator::Intermediate << incomplete;
    QTest::addRow("just long enough") << 4L << u"AB12"_s << u"AB12"_s << QValidator::Acceptable << valid;
    QTest::addRow("long enough, not in the list")
        << 4L << u"XY99"_s << u"XY99"_s << QValidator::Invalid << invalid;
    QTest::addRow("negative minimum") << -3L << u"X"_s << u"X"_s << QValidator::Invalid << invalid;
    QTest::addRow("other dashes stay") << 0L << u"AB–12"_s << u"AB–12"_s << QValidator::Invalid << invalid;
}

void TestZEFListValidator::judges()
{
    QFETCH(long, minimum);
    QFETCH(QString, input);

    ZEFListValidator validator(nullptr, {u"AB12"_s, u"CD-34"_s, u"ZZZZZZ"_s});
    validator.setMinimumLength(minimum);
    QCOMPARE(validator.minimumLength(), minimum);
    int position = 0;
    QTEST(validator.validate(input, position), "state");
    QTEST(input, "left");
    QTEST(validator.lastMessage(), "message");
}

void TestZEFListValidator::leavesTheCursorAlone()
{
    const ZEFListValidator validator(nullptr, {u"AB12"_s});
    QString input = u"AB-12"_s;
    int position = 5;
    validator.validate(input, position);
    QCOMPARE(position, 5);
}

void TestZEFListValidator::settingTheMinimumDoesNotRevalidate()
{
    ZEFListValidator validator(nullptr, {u"AB12"_s});
    validated(validator, u"AB12"_s);
    const QSignalSpy states(&validator, &ZEFListValidator::validityChanged);
    validator.setMinimumLength(9);
    QCOMPARE(states.size(), 0);
    QCOMPARE(validator.lastMessage(), valid);
}

void TestZEFListValidator::announcesOnlyChanges()
{
    const ZEFListValidator validator(nullptr, {u"AB12"_s});
    const QSignalSpy states(&validator, &ZEFListValidator::validityChanged);
    const QSignalSpy messages(&validator, &ZEFListValidator::validityMessageChanged);
    validated(validator, u"AB12"_s);
    validated(validator, u"AB12"_s);
    QCOMPARE(states.size(), 1);
    QCOMPARE(states.at(0).at(0).value<QValidator::State>(), QValidator::Acceptable);
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).at(0).toString(), valid);
}

void TestZEFListValidator::announcesTheStateFirst()
{
    const ZEFListValidator validator(nullptr, {u"AB12"_s});
    QStringList order;
    connect(&validator, &ZEFListValidator::validityMessageChanged, this,
            [&](const QString& message) { order.append(message); });
    connect(&validator, &ZEFListValidator::validityChanged, this, [&] {
        // The message is not yet there.
        order.append(u"state, "_s + validator.lastMessage());
    });
    validated(validator, u"AB12"_s);
    QCOMPARE(order, (QStringList{u"state, "_s, valid}));
}

void TestZEFListValidator::aFirstInvalidChangesTheMessageOnly()
{
    const ZEFListValidator validator(nullptr, {u"AB12"_s});
    const QSignalSpy states(&validator, &ZEFListValidator::validityChanged);
    const QSignalSpy messages(&validator, &ZEFListValidator::validityMessageChanged);
    QCOMPARE(validated(validator, u"nothing"_s), QValidator::Invalid);
    QCOMPARE(states.size(), 0);
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).at(0).toString(), invalid);
}

void TestZEFListValidator::aNewMessageMayComeWithoutANewState()
{
    ZEFListValidator validator(nullptr, {u"AB12"_s});
    validator.setMinimumLength(4);
    validated(validator, u""_s);
    const QSignalSpy states(&validator, &ZEFListValidator::validityChanged);
    const QSignalSpy messages(&validator, &ZEFListValidator::validityMessageChanged);
    validated(validator, u"A"_s);
    QCOMPARE(states.size(), 0);
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.at(0).at(0).toString(), incomplete);
}

void TestZEFListValidator::aReceiverMayDeleteIt_data()
{
    QTest::addColumn<bool>("atTheState");
    QTest::addRow("at the state") << true;
    QTest::addRow("at the message") << false;
}

void TestZEFListValidator::aReceiverMayDeleteIt()
{
    QFETCH(bool, atTheState);
    const QPointer<ZEFListValidator> validator(new ZEFListValidator(nullptr, {u"AB12"_s}));
    if (atTheState)
        connect(validator, &ZEFListValidator::validityChanged, this, [&] { delete validator; });
    else
        connect(validator, &ZEFListValidator::validityMessageChanged, this, [&] { delete validator; });
    QCOMPARE(validated(*validator, u"AB12"_s), QValidator::Acceptable);
    QVERIFY(!validator);
}

void TestZEFListValidator::keepsTheOutcomeOfAReceiver()
{
    ZEFListValidator validator(nullptr, {u"AB"_s});
    QString other = u"XY"_s;
    QString text = u"AB"_s;
    int position = 0;
    bool nested = false;
    QObject::connect(&validator, &ZEFListValidator::validityChanged, &validator, [&] {
        if (!std::exchange(nested, true))
            validator.validate(other, position);
    });
    QCOMPARE(validator.validate(text, position), QValidator::Invalid);
    QCOMPARE(validator.lastMessage(), u"%{list_invalid_message}"_s);
}

void TestZEFListValidator::aSubclassCanRecordItsOwnOutcome()
{
    class Loose : public ZEFListValidator {
    public:
        using ZEFListValidator::updateValidity;
        using ZEFListValidator::ZEFListValidator;
        QString lastMessage() const override { return u"<"_s + ZEFListValidator::lastMessage() + u">"_s; }
    };
    Loose validator(nullptr, {});
    const QSignalSpy states(&validator, &ZEFListValidator::validityChanged);
    QCOMPARE(validator.updateValidity(QValidator::Acceptable, u"mine"_s), QValidator::Acceptable);
    QCOMPARE(std::as_const(validator).updateValidity(QValidator::Intermediate, u"mine"_s),
             QValidator::Intermediate);
    QCOMPARE(states.size(), 2);
    const ZEFListValidator& base = validator;
    QCOMPARE(base.lastMessage(), u"<mine>"_s);
}

void TestZEFListValidator::doesNotFixUp()
{
    const ZEFListValidator validator(nullptr, {u"AB12"_s});
    QString input = u"A-B"_s;
    validator.fixup(input);
    QCOMPARE(input, u"A-B"_s);
}

ZEF_TEST_MAIN(TestZEFListValidator)
#include "test_zeflistvalidator.moc"
