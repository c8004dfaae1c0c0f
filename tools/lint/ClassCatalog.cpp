#include "ClassCatalog.h"

#include "element/customClasses.h"

#include <QtCore/QHash>
#include <QtWidgets/QtWidgets>

#include <algorithm>

namespace {

constexpr double alike = 0.7;
constexpr qsizetype longestName = 100;

struct QtClass {
    const char* name;
    const QMetaObject* metaObject;
};

// What QUiLoader creates without plug-ins; the tests compare it with QUiLoader::availableWidgets().
// Names that are not those of their meta-objects are aliases of the loader.
const QList<QtClass>& qtClasses()
{
    static const QList<QtClass> classes = {
        {"Line", &QFrame::staticMetaObject},
        {"QAbstractScrollArea", &QAbstractScrollArea::staticMetaObject},
        {"QAbstractSlider", &QAbstractSlider::staticMetaObject},
        {"QAbstractSpinBox", &QAbstractSpinBox::staticMetaObject},
        {"QCalendarWidget", &QCalendarWidget::staticMetaObject},
        {"QCheckBox", &QCheckBox::staticMetaObject},
        {"QColumnView", &QColumnView::staticMetaObject},
        {"QComboBox", &QComboBox::staticMetaObject},
        {"QCommandLinkButton", &QCommandLinkButton::staticMetaObject},
        {"QDateEdit", &QDateEdit::staticMetaObject},
        {"QDateTimeEdit", &QDateTimeEdit::staticMetaObject},
        {"QDial", &QDial::staticMetaObject},
        {"QDialog", &QDialog::staticMetaObject},
        {"QDialogButtonBox", &QDialogButtonBox::staticMetaObject},
        {"QDockWidget", &QDockWidget::staticMetaObject},
        {"QDoubleSpinBox", &QDoubleSpinBox::staticMetaObject},
        {"QFontComboBox", &QFontComboBox::staticMetaObject},
        {"QFrame", &QFrame::staticMetaObject},
        {"QGraphicsView", &QGraphicsView::staticMetaObject},
        {"QGroupBox", &QGroupBox::staticMetaObject},
        {"QKeySequenceEdit", &QKeySequenceEdit::staticMetaObject},
        {"QLCDNumber", &QLCDNumber::staticMetaObject},
        {"QLabel", &QLabel::staticMetaObject},
        {"QLineEdit", &QLineEdit::staticMetaObject},
        {"QListView", &QListView::staticMetaObject},
        {"QListWidget", &QListWidget::staticMetaObject},
        {"QMainWindow", &QMainWindow::staticMetaObject},
        {"QMdiArea", &QMdiArea::staticMetaObject},
        {"QMenu", &QMenu::staticMetaObject},
        {"QMenuBar", &QMenuBar::staticMetaObject},
        {"QOpenGLWidget", &QWidget::staticMetaObject},
        {"QPlainTextEdit", &QPlainTextEdit::staticMetaObject},
        {"QProgressBar", &QProgressBar::staticMetaObject},
        {"QPushButton", &QPushButton::staticMetaObject},
        {"QRadioButton", &QRadioButton::staticMetaObject},
        {"QScrollArea", &QScrollArea::staticMetaObject},
        {"QScrollBar", &QScrollBar::staticMetaObject},
        {"QSlider", &QSlider::staticMetaObject},
        {"QSpinBox", &QSpinBox::staticMetaObject},
        {"QSplitter", &QSplitter::staticMetaObject},
        {"QStackedWidget", &QStackedWidget::staticMetaObject},
        {"QStatusBar", &QStatusBar::staticMetaObject},
        {"QTabWidget", &QTabWidget::staticMetaObject},
        {"QTableView", &QTableView::staticMetaObject},
        {"QTableWidget", &QTableWidget::staticMetaObject},
        {"QTextBrowser", &QTextBrowser::staticMetaObject},
        {"QTextEdit", &QTextEdit::staticMetaObject},
        {"QTimeEdit", &QTimeEdit::staticMetaObject},
        {"QToolBar", &QToolBar::staticMetaObject},
        {"QToolBox", &QToolBox::staticMetaObject},
        {"QToolButton", &QToolButton::staticMetaObject},
        {"QTreeView", &QTreeView::staticMetaObject},
        {"QTreeWidget", &QTreeWidget::staticMetaObject},
        {"QUndoView", &QUndoView::staticMetaObject},
        {"QWidget", &QWidget::staticMetaObject},
        {"QWizard", &QWizard::staticMetaObject},
        {"QWizardPage", &QWizardPage::staticMetaObject},
    };
    return classes;
}

const QHash<QString, const QMetaObject*>& knownClasses()
{
    static const QHash<QString, const QMetaObject*> classes = [] {
        QHash<QString, const QMetaObject*> all;
        for (const QtClass& entry : qtClasses())
            all.insert(QString::fromLatin1(entry.name), entry.metaObject);
        for (const CustomClass& entry : customClasses())
            all.insert(entry.name, entry.metaObject);
        return all;
    }();
    return classes;
}

//! 1 for equal names, 0 for names without a letter in common, by their longest common subsequence.
double likeness(const QString& a, const QString& b)
{
    QList<qsizetype> row(b.size() + 1, 0);
    for (const QChar letter : a) {
        qsizetype diagonal = 0;
        for (qsizetype i = 0; i < b.size(); ++i) {
            const qsizetype above = row.at(i + 1);
            row[i + 1] = letter.toLower() == b.at(i).toLower() ? diagonal + 1 : qMax(above, row.at(i));
            diagonal = above;
        }
    }
    return 2.0 * double(row.constLast()) / double(a.size() + b.size());
}

QString mostAlike(const QString& className, const QStringList& candidates)
{
    QString best;
    double bestLikeness = alike;
    for (const QString& candidate : candidates) {
        if (const double current = likeness(className, candidate); current > bestLikeness) {
            bestLikeness = current;
            best = candidate;
        }
    }
    return best;
}

//! The class that the loader knows, or the last one that it comes to.
QString lastPromotion(const Form& form, QString className)
{
    // A class may be promoted from itself in a broken form.
    for (qsizetype step = 0; step < FormCheck::deepest && !ClassCatalog::find(className); ++step) {
        const auto base = form.promotedClasses.constFind(className);
        if (base == form.promotedClasses.cend())
            break;
        className = *base;
    }
    return className;
}

} // namespace

const QMetaObject* ClassCatalog::find(const QString& className)
{
    return knownClasses().value(className);
}

const QMetaObject* ClassCatalog::created(const Form& form, const FormWidget& widget)
{
    return find(lastPromotion(form, widget.className));
}

bool ClassCatalog::isPromotedForever(const Form& form, const FormWidget& widget)
{
    const QString last = lastPromotion(form, widget.className);
    return !find(last) && form.promotedClasses.contains(last);
}

const FormCheck::Classes& ClassCatalog::formClasses()
{
    static const FormCheck::Classes classes = [] {
        const QStringList layouts = layoutClassNames();
        const QStringList widgets = knownClasses().keys();
        return FormCheck::Classes{{layouts.cbegin(), layouts.cend()}, {widgets.cbegin(), widgets.cend()}};
    }();
    return classes;
}

QString ClassCatalog::nearestLayout(const QString& className)
{
    return className.size() > longestName ? QString() : mostAlike(className, layoutClassNames());
}

QString ClassCatalog::nearest(const QString& className)
{
    if (className.size() > longestName)
        return QString();
    if (className.startsWith(u"ZEF", Qt::CaseInsensitive)) {
        QStringList names;
        for (const CustomClass& entry : customClasses())
            names.append(entry.name);
        if (QString name = mostAlike(className, names); !name.isEmpty())
            return name;
    }
    return mostAlike(className, qtClassNames());
}

QStringList ClassCatalog::layoutClassNames()
{
    return {QStringLiteral("QFormLayout"), QStringLiteral("QGridLayout"), QStringLiteral("QHBoxLayout"),
            QStringLiteral("QStackedLayout"), QStringLiteral("QVBoxLayout")};
}

QStringList ClassCatalog::qtClassNames()
{
    QStringList names;
    for (const QtClass& entry : qtClasses())
        names.append(QString::fromLatin1(entry.name));
    return names;
}

bool ClassCatalog::takesFocus(const QMetaObject* meta)
{
    // The tests compare it with the widgets themselves.
    static const Families takers{"QAbstractButton",  "QAbstractScrollArea", "QAbstractSpinBox",
                                 "QCalendarWidget",  "QComboBox",           "QDial",
                                 "QKeySequenceEdit", "QLineEdit",           "QSlider",
                                 "QTabWidget",       "ZEFFormatEdit"};
    return takers.contain(meta) && !inherits(meta, "QMdiArea");
}

bool ClassCatalog::Families::contain(const QMetaObject* meta) const
{
    const auto known = m_known.constFind(meta);
    if (known != m_known.cend())
        return *known;
    const bool contains = std::any_of(m_classNames.cbegin(), m_classNames.cend(),
                                      [&](const char* name) { return inherits(meta, name); });
    m_known.insert(meta, contains);
    return contains;
}

bool ClassCatalog::inherits(const QMetaObject* meta, const char* className)
{
    for (; meta; meta = meta->superClass()) {
        if (qstrcmp(meta->className(), className) == 0)
            return true;
    }
    return false;
}
