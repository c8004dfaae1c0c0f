#include <ZEFTest.h>

#include <QtCore/QFile>

class ReadmeTest : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void showsTheMinimalServiceAsItIsBuilt();
};

namespace {

QByteArray content(const char* path)
{
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void ReadmeTest::showsTheMinimalServiceAsItIsBuilt()
{
    const QByteArray source = content(PROJECT_FOLDER "/examples/minimal/main.cpp");
    QVERIFY(!source.isEmpty());
    const QByteArray block = "```cpp\n" + source + "```\n";
    QVERIFY(content(PROJECT_FOLDER "/README.md").contains(block));
}

ZEF_TEST_MAIN(ReadmeTest)
#include "test_readme.moc"
