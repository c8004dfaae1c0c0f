// The pictures of the manual show what the widgets look like today.

#include <ZEFTest.h>

#include <QtGui/QImage>
#include <QtWidgets/QApplication>

namespace {

const QString Pictures = QStringLiteral(ZEFUI_PICTURES);

//! The picture in so few pixels that no single letter matters, whatever the fonts of the machine.
QImage coarse(const QImage& picture)
{
    return picture.convertToFormat(QImage::Format_RGB32)
        .scaled(24, 12, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

//! The mean difference of a colour channel, 0 to 255.
double difference(const QImage& a, const QImage& b)
{
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QColor p = a.pixelColor(x, y);
            const QColor q = b.pixelColor(x, y);
            sum += qAbs(p.red() - q.red()) + qAbs(p.green() - q.green()) + qAbs(p.blue() - q.blue());
        }
    }
    return sum / (3.0 * a.width() * a.height());
}

bool similar(int a, int b)
{
    return qAbs(a - b) <= qMax(a, b) / 4;
}

} // namespace

class TestGallery : public ZEFTest {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void pictures_data();
    void pictures();
    void noOtherPictures();
    void comparisonSeesAMissingWidget();

private:
    QTemporaryDir m_fresh;
};

void TestGallery::initTestCase()
{
    QVERIFY(m_fresh.isValid());
    QProcess gallery;
    gallery.setProcessChannelMode(QProcess::ForwardedChannels);
    gallery.start(QStringLiteral(ZEFUI_GALLERY), {QStringLiteral("--render"), m_fresh.path()});
    QVERIFY(gallery.waitForFinished(120000));
    QCOMPARE(gallery.exitStatus(), QProcess::NormalExit);
    QCOMPARE(gallery.exitCode(), 0);
}

void TestGallery::pictures_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"zefcalendarwidget", "zefcommandlinkbutton", "zefellipsislabel", "zefflatbutton",
                             "zefformatcell", "zefformatedit", "zefhyperlinklabel", "zeflightstdbutton",
                             "zeflightstdssbutton", "zeflightstdsscheckbox", "zeftogglebutton"})
        QTest::newRow(name) << QLatin1String(name) + QStringLiteral(".png");
}

void TestGallery::pictures()
{
    QFETCH(const QString, name);
    const QImage fresh(m_fresh.filePath(name));
    const QImage committed(Pictures + u'/' + name);
    QVERIFY(!fresh.isNull());
    QVERIFY2(!committed.isNull(), "run docs/make-pictures");
    QVERIFY2(similar(fresh.width(), committed.width()) && similar(fresh.height(), committed.height()),
             "the size has changed: run docs/make-pictures");
    const double mean = difference(coarse(fresh), coarse(committed));
    QVERIFY2(mean < 6, qPrintable(QStringLiteral("differs by %1: run docs/make-pictures").arg(mean)));
}

void TestGallery::noOtherPictures()
{
    const QStringList filter = {QStringLiteral("zef*.png")};
    const QStringList fresh = QDir(m_fresh.path()).entryList(filter, QDir::Files, QDir::Name);
    QCOMPARE(fresh.size(), 11);
    for (const QString& name : fresh)
        QVERIFY(QFile::exists(Pictures + u'/' + name));
}

void TestGallery::comparisonSeesAMissingWidget()
{
    const QImage picture(m_fresh.filePath(QStringLiteral("zefcommandlinkbutton.png")));
    QVERIFY(!picture.isNull());
    QImage bare(picture.size(), QImage::Format_RGB32);
    bare.fill(picture.pixelColor(1, 1));
    QVERIFY(difference(coarse(picture), coarse(bare)) >= 6);
}

ZEF_TEST_MAIN(TestGallery)
#include "test_gallery.moc"
