#include "ZEFTest.h"
#include "tools/preview/ResourceFile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QResource>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

class TestResourceFile : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void qtReadsIt_data();
    void qtReadsIt();
};

void TestResourceFile::qtReadsIt_data()
{
    QTest::addColumn<ResourceContents>("contents");

    ResourceContents many;
    for (int i = 0; i < 3000; ++i)
        many.insert(u"css/widget%1.css"_s.arg(i), QByteArray::number(i));
    QTest::newRow("one file") << ResourceContents{{u"forms/login.ui"_s, "<ui/>"}};
    QTest::newRow("three folders") << ResourceContents{
        {u"forms/login.ui"_s, "<ui/>"},
        {u"css/ok.css"_s, "color: red"},
        {u"css/win_ok.css"_s, "color: blue"},
        {u"i18n/zefmain_de.qm"_s, QByteArray("\0\x01\xff", 3)}};
    QTest::newRow("empty file") << ResourceContents{{u"forms/a.ui"_s, QByteArray()}};
    QTest::newRow("any letters") << ResourceContents{{u"forms/größe 日本 😀.ui"_s, "a"},
                                                     {u"forms/100%s.ui"_s, "b"}};
    // The first two names have the hash 0x260.
    QTest::newRow("names of one hash")
        << ResourceContents{{u"css/!P"_s, "a"}, {u"css/ `"_s, "b"}, {u"css/z"_s, "c"}};
    QTest::newRow("many files") << many;
    QTest::newRow("none") << ResourceContents();
}

void TestResourceFile::qtReadsIt()
{
    QFETCH(const ResourceContents, contents);
    const QByteArray file = resourceFile(contents);
    const auto* data = reinterpret_cast<const uchar*>(file.constData());
    const QString root = u"/zefui_test"_s;
    QVERIFY(QResource::registerResource(data, root));
    QStringList paths;
    for (const QString& folder : QDir(u':' + root).entryList(QDir::Dirs)) {
        for (const QString& name : QDir(u':' + root + u'/' + folder).entryList(QDir::Files))
            paths.append(folder + u'/' + name);
    }
    paths.sort();
    QCOMPARE(paths, QStringList(contents.keys()));
    for (auto entry = contents.cbegin(); entry != contents.cend(); ++entry) {
        QFile resource(u':' + root + u'/' + entry.key());
        QVERIFY2(resource.open(QIODevice::ReadOnly), qPrintable(entry.key()));
        QCOMPARE(resource.readAll(), entry.value());
    }
    QVERIFY(!QFile::exists(u':' + root + u"/forms/absent.ui"));
    QVERIFY(QResource::unregisterResource(data, root));
}

ZEF_TEST_MAIN(TestResourceFile)
#include "test_resourcefile.moc"
