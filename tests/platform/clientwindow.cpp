// A client with a window: prints the window's id once it is on the screen, and lives until it is killed.

#include <QtCore/QTextStream>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace {

class ClientWindow : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!m_announced)
            QTextStream(stdout) << winId() << Qt::endl;
        m_announced = true;
    }

private:
    bool m_announced = false;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    ClientWindow window;
    window.setGeometry(100, 100, 300, 200);
    window.show();
    return QApplication::exec();
}
