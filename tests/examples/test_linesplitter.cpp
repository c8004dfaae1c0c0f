#include <ZEFTest.h>
#include <protocol/LineSplitter.h>

class LineSplitterTest : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void splits_data();
    void splits();
    void keepsTheLongestLine();
    void reportsATooLongLineOnceAndGoesOn();
    void doesNotKeepATooLongLine();
};

using Lines = QList<std::optional<QByteArray>>;

void LineSplitterTest::splits_data()
{
    QTest::addColumn<QByteArrayList>("pieces");
    QTest::addColumn<QByteArrayList>("lines");
    QTest::newRow("nothing") << QByteArrayList{""} << QByteArrayList{};
    QTest::newRow("half a line") << QByteArrayList{"abc"} << QByteArrayList{};
    QTest::newRow("one line") << QByteArrayList{"abc\n"} << QByteArrayList{"abc"};
    QTest::newRow("a line in pieces") << QByteArrayList{"a", "b", "c\n"} << QByteArrayList{"abc"};
    QTest::newRow("two lines at once") << QByteArrayList{"a\nb\n"} << QByteArrayList{"a", "b"};
    QTest::newRow("empty lines") << QByteArrayList{"\n\n"} << QByteArrayList{"", ""};
    QTest::newRow("carriage return") << QByteArrayList{"a\r\nb\r", "\n"} << QByteArrayList{"a", "b"};
    QTest::newRow("carriage return inside") << QByteArrayList{"a\rb\n"} << QByteArrayList{"a\rb"};
    QTest::newRow("zero byte") << QByteArrayList{QByteArray("a\0b\n", 4)}
                               << QByteArrayList{QByteArray("a\0b", 3)};
}

void LineSplitterTest::splits()
{
    QFETCH(const QByteArrayList, pieces);
    QFETCH(const QByteArrayList, lines);
    LineSplitter splitter;
    Lines found;
    for (const QByteArray& piece : pieces)
        found.append(splitter.feed(piece));
    QCOMPARE(found, Lines(lines.cbegin(), lines.cend()));
}

void LineSplitterTest::keepsTheLongestLine()
{
    const QByteArray longest(LineSplitter::MaximumLineLength, 'x');
    LineSplitter splitter;
    QCOMPARE(splitter.feed(longest), Lines());
    QCOMPARE(splitter.feed("\n"), Lines{longest});
}

void LineSplitterTest::reportsATooLongLineOnceAndGoesOn()
{
    LineSplitter splitter;
    QCOMPARE(splitter.feed(QByteArray(LineSplitter::MaximumLineLength + 1, 'x')), Lines());
    QCOMPARE(splitter.feed(QByteArray(LineSplitter::MaximumLineLength + 1, 'x')), Lines());
    QCOMPARE(splitter.feed("x\nnext\n"), (Lines{std::nullopt, QByteArray("next")}));
}

void LineSplitterTest::doesNotKeepATooLongLine()
{
    LineSplitter splitter;
    QCOMPARE(splitter.feed(QByteArray(LineSplitter::MaximumLineLength + 1, 'x') + "\nok\n"),
             (Lines{std::nullopt, QByteArray("ok")}));
}

ZEF_TEST_MAIN(LineSplitterTest)
#include "test_linesplitter.moc"
