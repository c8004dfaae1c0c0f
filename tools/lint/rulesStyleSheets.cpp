// Style sheets and the widgets that they are meant for.

#include "ClassCatalog.h"
#include "RuleGroups.h"

#include <QtWidgets/QtWidgets>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

//! A widget as a selector sees it.
struct Node {
    const QMetaObject* meta;
    QString name;
    qsizetype parent;
};

//! A widget that another one makes for itself and that style sheets may name.
struct Part {
    const char* owner;
    const QMetaObject* meta;
    const char* name;
    //! The part of the owner that it is inside of, by name.
    const char* container = "";
    //! Whether the widgets that the form puts into the owner end up inside this part.
    bool holdsChildren = false;
};

const QList<Part>& parts()
{
    static const QList<Part> all = {
        {"QAbstractScrollArea", &QWidget::staticMetaObject, "qt_scrollarea_hcontainer"},
        {"QAbstractScrollArea", &QWidget::staticMetaObject, "qt_scrollarea_vcontainer"},
        {"QAbstractScrollArea", &QScrollBar::staticMetaObject, "", "qt_scrollarea_hcontainer"},
        {"QAbstractScrollArea", &QScrollBar::staticMetaObject, "", "qt_scrollarea_vcontainer"},
        {"QAbstractScrollArea", &QWidget::staticMetaObject, "qt_scrollarea_viewport", "", true},
        {"QAbstractSpinBox", &QLineEdit::staticMetaObject, "qt_spinbox_lineedit"},
        {"QDateTimeEdit", &QCalendarWidget::staticMetaObject, ""},
        {"QComboBox", &QFrame::staticMetaObject, ""},
        {"QComboBox", &QLineEdit::staticMetaObject, ""},
        {"QComboBox", &QListView::staticMetaObject, ""},
        {"QTableView", &QHeaderView::staticMetaObject, ""},
        {"QTableView", &QAbstractButton::staticMetaObject, ""},
        {"QTreeView", &QHeaderView::staticMetaObject, ""},
        {"QAbstractItemView", &QLineEdit::staticMetaObject, ""},
        {"QTabWidget", &QTabBar::staticMetaObject, "qt_tabwidget_tabbar"},
        {"QTabWidget", &QStackedWidget::staticMetaObject, "qt_tabwidget_stackedwidget", "", true},
        {"QTabBar", &QToolButton::staticMetaObject, ""},
        {"QToolBox", &QAbstractButton::staticMetaObject, "qt_toolbox_toolboxbutton"},
        {"QToolBox", &QScrollArea::staticMetaObject, "", "", true},
        {"QSplitter", &QSplitterHandle::staticMetaObject, ""},
        {"QDialogButtonBox", &QPushButton::staticMetaObject, ""},
        {"QDockWidget", &QAbstractButton::staticMetaObject, ""},
        {"QToolBar", &QToolButton::staticMetaObject, "qt_toolbar_ext_button"},
        {"QStatusBar", &QSizeGrip::staticMetaObject, ""},
        {"QMdiArea", &QTabBar::staticMetaObject, ""},
        {"QMdiArea", &QMdiSubWindow::staticMetaObject, ""},
        {"QLineEdit", &QToolButton::staticMetaObject, ""},
        {"QKeySequenceEdit", &QLineEdit::staticMetaObject, "qt_keysequenceedit_lineedit"},
        {"QCalendarWidget", &QTableView::staticMetaObject, "qt_calendar_calendarview"},
        {"QCalendarWidget", &QWidget::staticMetaObject, "qt_calendar_navigationbar"},
        {"QCalendarWidget", &QToolButton::staticMetaObject, "qt_calendar_prevmonth"},
        {"QCalendarWidget", &QToolButton::staticMetaObject, "qt_calendar_nextmonth"},
        {"QCalendarWidget", &QToolButton::staticMetaObject, "qt_calendar_monthbutton"},
        {"QCalendarWidget", &QToolButton::staticMetaObject, "qt_calendar_yearbutton"},
        {"QCalendarWidget", &QSpinBox::staticMetaObject, "qt_calendar_yearedit"},
        {"QWizard", &QPushButton::staticMetaObject, ""},
        {"QWizard", &QLabel::staticMetaObject, ""},
        {"ZEFCommandLinkButton", &QLabel::staticMetaObject, "title"},
        {"ZEFCommandLinkButton", &QLabel::staticMetaObject, "description"},
        {"ZEFCommandLinkButton", &QLabel::staticMetaObject, "icon"},
        {"ZEFToggleButton", &QLabel::staticMetaObject, "title"},
        {"ZEFToggleButton", &QLabel::staticMetaObject, "image"},
        {"ZEFFormatEdit", &QLabel::staticMetaObject, ""},
        {"ZEFFormatEdit", ClassCatalog::find(u"ZEFFormatCell"_s), ""},
    };
    return all;
}

//! The parts of each class that a form used so far; going through the table for each widget would be slow.
const QList<Part>& partsOf(const QMetaObject* owner)
{
    static QHash<const QMetaObject*, QList<Part>> known;
    const auto found = known.constFind(owner);
    if (found != known.cend())
        return *found;
    QList<Part> own;
    for (const Part& part : parts()) {
        if (part.meta && ClassCatalog::inherits(owner, part.owner))
            own.append(part);
    }
    return *known.insert(owner, own);
}

//! The widgets of a form with those that they make for themselves: first all of the form, then the parts.
class WidgetTree {
public:
    explicit WidgetTree(const Form& form);

    bool hasWidgetNamed(const QString& name) const { return m_names.contains(name); }
    //! Whether a sheet on one of the widgets \a styled finds a widget for \a selector.
    bool matches(const Selector& selector, const QList<qsizetype>& styled) const;
    QList<qsizetype> widgetsNamed(const QStringList& names) const;

private:
    void addParts(qsizetype owner, QHash<qsizetype, qsizetype>* holders);
    bool matchesAt(const Selector& selector, qsizetype part, qsizetype node) const;
    bool matchesAbove(const Selector& selector, qsizetype part, qsizetype node) const;
    bool isAtOrBelow(qsizetype node, const QList<qsizetype>& styled) const;

    QList<Node> m_nodes;
    QMultiHash<QString, qsizetype> m_names;
};

WidgetTree::WidgetTree(const Form& form)
{
    for (const FormWidget& widget : form.widgets)
        m_nodes.append({widget.created, widget.name, widget.parent});
    // Parts have parts too, but none has one of its own class, so this ends.
    QHash<qsizetype, qsizetype> holders;
    for (qsizetype owner = 0; owner < m_nodes.size(); ++owner)
        addParts(owner, &holders);
    for (qsizetype node = 0; node < form.widgets.size(); ++node) {
        qsizetype parent = m_nodes.at(node).parent;
        while (holders.contains(parent))
            parent = holders.value(parent);
        m_nodes[node].parent = parent;
    }
    for (qsizetype node = 0; node < m_nodes.size(); ++node) {
        if (!m_nodes.at(node).name.isEmpty())
            m_names.insert(m_nodes.at(node).name, node);
    }
}

//! Adds the parts of a widget; one that holds the widget's children goes to \a holders.
void WidgetTree::addParts(qsizetype owner, QHash<qsizetype, qsizetype>* holders)
{
    if (!m_nodes.at(owner).meta)
        return;
    QHash<QLatin1String, qsizetype> named;
    for (const Part& part : partsOf(m_nodes.at(owner).meta)) {
        const qsizetype node = m_nodes.size();
        const QLatin1String name(part.name);
        if (!name.isEmpty())
            named.insert(name, node);
        m_nodes.append({part.meta, name, named.value(QLatin1String(part.container), owner)});
        if (part.holdsChildren)
            holders->insert(owner, node);
    }
}

QList<qsizetype> WidgetTree::widgetsNamed(const QStringList& names) const
{
    QList<qsizetype> found;
    for (const QString& name : names)
        found += m_names.values(name);
    return found;
}

bool hasClass(const QMetaObject* meta, const QString& className)
{
    // Style sheets spell the "::" of a namespace as "--".
    const QByteArray name = QString(className).replace(u"--"_s, u"::"_s).toUtf8();
    return ClassCatalog::inherits(meta, name.constData());
}

bool matchesNode(const SimpleSelector& part, const Node& node)
{
    if (!node.meta || (!part.objectName.isEmpty() && part.objectName != node.name))
        return false;
    if (!part.type.isEmpty() && !hasClass(node.meta, part.type))
        return false;
    return std::all_of(part.exactClasses.cbegin(), part.exactClasses.cend(), [&](const QString& name) {
        return QString(name).replace(u"--"_s, u"::"_s) == QLatin1String(node.meta->className());
    });
}

//! The widgets above a form are the host and whatever the service puts it in; any of them may match.
bool mayMatchAbove(const SimpleSelector& part)
{
    static const QStringList hostTypes{u"ZEFUIDialog"_s, u"ZEFUIWidget"_s, u"QDialog"_s, u"QWidget"_s};
    return part.objectName.isEmpty() && (part.type.isEmpty() || hostTypes.contains(part.type));
}

//! Tool tips and menus belong to no widget of the form and take their look from the one they appear on.
bool isTransient(const SimpleSelector& part)
{
    return part.type == u"QToolTip" || part.type == u"QMenu";
}

bool WidgetTree::matchesAt(const Selector& selector, qsizetype part, qsizetype node) const
{
    if (!matchesNode(selector.parts.at(part), m_nodes.at(node)))
        return false;
    return part == 0 || matchesAbove(selector, part, node);
}

//! Whether the parts before \a part match above \a node.
bool WidgetTree::matchesAbove(const Selector& selector, qsizetype part, qsizetype node) const
{
    const bool onlyParent = selector.parts.at(part).isChild;
    for (qsizetype above = m_nodes.at(node).parent; above >= 0; above = m_nodes.at(above).parent) {
        if (matchesAt(selector, part - 1, above))
            return true;
        if (onlyParent)
            return false;
    }
    return std::all_of(selector.parts.cbegin(), selector.parts.cbegin() + part, mayMatchAbove);
}

bool WidgetTree::isAtOrBelow(qsizetype node, const QList<qsizetype>& styled) const
{
    for (; node >= 0; node = m_nodes.at(node).parent) {
        if (styled.contains(node))
            return true;
    }
    return false;
}

bool WidgetTree::matches(const Selector& selector, const QList<qsizetype>& styled) const
{
    if (selector.parts.isEmpty() || isTransient(selector.parts.constLast()))
        return true;
    const qsizetype last = selector.parts.size() - 1;
    // Most often it is the styled widget itself.
    if (std::any_of(styled.cbegin(), styled.cend(),
                    [&](qsizetype node) { return matchesAt(selector, last, node); }))
        return true;
    for (qsizetype node = 0; node < m_nodes.size(); ++node) {
        if (matchesAt(selector, last, node) && isAtOrBelow(node, styled))
            return true;
    }
    return false;
}

QList<WidgetTree> treesOf(const Project& project)
{
    QList<WidgetTree> trees;
    for (const Form& form : project.forms)
        trees.append(WidgetTree(form));
    return trees;
}

} // namespace

void checkStyleSheetFiles(const Project& project, QLatin1String rule, Findings* findings)
{
    if (project.styleSheets.isEmpty())
        return;
    const QList<WidgetTree> trees = treesOf(project);
    for (const StyleSheet& sheet : project.styleSheets) {
        const bool used = std::any_of(trees.cbegin(), trees.cend(), [&](const WidgetTree& tree) {
            return !tree.widgetsNamed(sheet.objectNames).isEmpty();
        });
        if (!used) {
            findings->append(
                {rule, sheet.path, 1,
                 u"no widget of the forms is named \"" + sheet.objectNames.constLast()
                     + u"\", so this style sheet styles nothing. Name it after a widget, or remove it."});
        }
    }
}

void checkSelectors(const Project& project, QLatin1String rule, Findings* findings)
{
    const QString advice = u" Correct the selector, or remove its rule."_s;
    QList<WidgetTree> trees;
    if (!project.styleSheets.isEmpty())
        trees = treesOf(project);
    for (const StyleSheet& sheet : project.styleSheets) {
        for (const Selector& selector : sheet.selectors) {
            bool used = false;
            bool styles = false;
            for (const WidgetTree& tree : trees) {
                const QList<qsizetype> styled = tree.widgetsNamed(sheet.objectNames);
                styles = styles || !styled.isEmpty();
                used = used || (!styled.isEmpty() && tree.matches(selector, styled));
            }
            if (styles && !used) {
                findings->append({rule, sheet.path, selector.line,
                                  u"the selector \"" + selector.text + u"\" matches neither \""
                                      + sheet.objectNames.constLast() + u"\" nor a widget inside it."
                                      + advice});
            }
        }
    }

    for (const Form& form : project.forms) {
        std::optional<WidgetTree> tree;
        for (qsizetype index = 0; index < form.widgets.size(); ++index) {
            const FormWidget& widget = form.widgets.at(index);
            const FormProperty* property = widget.property("styleSheet"_L1);
            if (!property)
                continue;
            if (!tree)
                tree.emplace(form);
            for (const Selector& selector : selectorsOf(property->value.text, property->value.line)) {
                if (!tree->matches(selector, {index})) {
                    findings->append({rule, form.path, selector.line,
                                      u"the selector \"" + selector.text + u"\" matches neither \""
                                          + widget.name + u"\" nor a widget inside it." + advice});
                }
            }
        }
    }
}
