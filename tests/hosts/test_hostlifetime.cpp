#include "ElementTest.h"

#include <QtCore/QRandomGenerator>
#include <QtWidgets/QPushButton>

/*!
 * Random operations over nested hosts. Whatever the order: at most one answer per host, every context
 * deleted exactly once, no crash. A run is repeated with ZEFUI_LIFETIME_SEED; ZEFUI_LIFETIME_OPERATIONS
 * sets its length.
 */
class World : public QObject {
    Q_OBJECT

public:
    explicit World(quint32 seed)
        : m_random(seed)
    {
    }
    ~World() override
    {
        for (const QPointer<QWidget>& host : std::as_const(m_hosts))
            delete host;
    }

    void step();
    void settle();
    QStringList failures() const;

public Q_SLOTS:
    // the delegate of every form: what a click does is drawn by lot
    void okButton_clicked(ZEFPipeFacilityInvocationContext*) { act(pick()); }
    void agree_clicked(ZEFPipeFacilityInvocationContext*, QVariant, QVariant) { }
    void under_score_clicked(ZEFPipeFacilityInvocationContext*) { act(pick()); }

private:
    struct Request {
        int answers = 0;
        int deletions = 0;
    };
    class Context : public ZEFPipeFacilityInvocationContext {
    public:
        explicit Context(std::shared_ptr<Request> request)
            : m_request(std::move(request))
        {
        }
        ~Context() override { ++m_request->deletions; }

    private:
        std::shared_ptr<Request> m_request;
    };

    int draw(int bound) { return m_random.bounded(bound); }
    QWidget* pick();
    void create(QWidget* parent);
    void act(QWidget* host);
    template <class Host> void watch(Host* host, const std::shared_ptr<Request>& request);

    QRandomGenerator m_random;
    QList<QPointer<QWidget>> m_hosts;
    QList<std::shared_ptr<Request>> m_requests;
    int m_depth = 0;
};

QWidget* World::pick()
{
    m_hosts.removeAll(QPointer<QWidget>());
    return m_hosts.isEmpty() ? nullptr : m_hosts.at(draw(static_cast<int>(m_hosts.size()))).data();
}

template <class Host> void World::watch(Host* host, const std::shared_ptr<Request>& request)
{
    const QPointer<QWidget> guard(host);
    connect(host, &Host::respondClosed, this, [this, request, guard] {
        ++request->answers;
        if (draw(3) == 0)
            act(draw(2) == 0 ? guard.data() : pick());
    });
    connect(host->element(), &ZEFUIElement::closing, this, [this, guard] {
        if (draw(8) == 0)
            act(draw(2) == 0 ? guard.data() : pick());
    });
    host->element()->setDelegate(this);
    m_hosts.append(guard);
    m_requests.append(request);
}

void World::create(QWidget* parent)
{
    if (m_hosts.size() > 30)
        return;
    const auto request = std::make_shared<Request>();
    const QString form = draw(8) == 0 ? u"missing"_s : draw(2) == 0 ? u"names"_s : u"labels"_s;
    if (draw(2) == 0) {
        auto* dialog = new ZEFUIDialog(form, u"de"_s, parent, Qt::Dialog, new Context(request));
        watch(dialog, request);
        connect(dialog, &ZEFUIDialog::dialog_key_pressed, this, [this] {
            if (draw(10) == 0)
                act(pick());
        });
        connect(dialog, &ZEFUIDialog::dialog_clicked, this, [this] {
            if (draw(3) == 0)
                act(pick());
        });
        // these come in the middle of Qt's own closing: the element may be closed, nothing may be deleted
        const QPointer<ZEFUIElement> element(dialog->element());
        const auto close = [this, element] {
            if (element && draw(3) == 0)
                element->close();
        };
        connect(dialog, &QDialog::rejected, this, close);
        connect(dialog, &QDialog::finished, this, close);
    } else {
        watch(new ZEFUIWidget(form, u"en"_s, parent, Qt::Window, new Context(request)), request);
    }
}

void World::act(QWidget* host)
{
    if (m_depth > 4)
        return;
    ++m_depth;
    const auto leave = qScopeGuard([this] { --m_depth; });
    if (!host) {
        create(nullptr);
        return;
    }
    ZEFUIElement* element = ZEFUIElement::elementFromQObject(host);
    switch (draw(16)) {
    case 0:
        create(nullptr);
        break;
    case 1:
        create(host);
        break;
    case 2:
        host->close();
        break;
    case 3:
    case 4: {
        QKeyEvent key(QEvent::KeyPress, draw(2) == 0 ? Qt::Key_Escape : Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(host, &key);
        break;
    }
    case 5:
        delete host;
        break;
    case 6:
        if (element)
            element->setFormPath(draw(2) == 0 ? u"names"_s : u"missing"_s);
        break;
    case 7:
        host->hide();
        break;
    case 8:
        host->show();
        break;
    case 9:
    case 10:
        for (const QString& name : {u"okButton"_s, u"under_score"_s, u"close"_s}) {
            auto* button = host->findChild<QPushButton*>(name);
            if (button && draw(2) == 0) {
                button->click();
                break;
            }
        }
        break;
    case 11:
        if (element)
            element->close();
        break;
    case 12:
        if (element)
            element->setClosing(draw(4) != 0);
        break;
    case 13:
        if (draw(4) == 0)
            delete element;
        break;
    case 14: {
        QMouseEvent release(QEvent::MouseButtonRelease, QPointF(1, 1), QPointF(1, 1), Qt::LeftButton,
                            Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(host, &release);
        break;
    }
    default:
        if (element)
            element->destroy();
        break;
    }
}

void World::step()
{
    act(pick());
    if (draw(10) == 0)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

void World::settle()
{
    while (QWidget* host = pick()) {
        delete host;
        QCoreApplication::processEvents();
    }
}

QStringList World::failures() const
{
    QStringList failures;
    for (const auto& request : m_requests) {
        if (request->answers > 1)
            failures.append(u"a request was answered %1 times"_s.arg(request->answers));
        if (request->deletions != 1)
            failures.append(u"a context was deleted %1 times"_s.arg(request->deletions));
    }
    return failures;
}

class TestHostLifetime : public ElementTest {
    Q_OBJECT

private Q_SLOTS:
    void randomOperations_data();
    void randomOperations();
};

void TestHostLifetime::randomOperations_data()
{
    QTest::addColumn<quint32>("seed");
    bool given = false;
    const uint seed = qEnvironmentVariable("ZEFUI_LIFETIME_SEED").toUInt(&given);
    if (given) {
        QTest::newRow("given seed") << quint32(seed);
        return;
    }
    for (const quint32 fixed : {1u, 2u, 3u, 4u, 5u})
        QTest::addRow("seed %u", fixed) << fixed;
}

void TestHostLifetime::randomOperations()
{
    QFETCH(quint32, seed);
    TestLog::allow(QRegularExpression(u"(debug|warning): .*"_s)); // of no interest here
    bool given = false;
    const int length = qEnvironmentVariable("ZEFUI_LIFETIME_OPERATIONS").toInt(&given);
    World world(seed);
    for (int i = 0; i < (given ? length : 1000); ++i) {
        world.step();
        if (i % 100 == 99)
            TestLog::takeAll();
    }
    world.settle();
    QCOMPARE(world.failures(), QStringList());
}

ZEF_TEST_MAIN(TestHostLifetime)
#include "test_hostlifetime.moc"
