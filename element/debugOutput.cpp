#include "debugOutput.h"

#include <QtCore/QLoggingCategory>
#include <QtWidgets/QLineEdit>

void writeDebug(const QString& text)
{
    // Without a QDebug, which costs more than to find a widget, and without a format string: names and values
    // are data, whatever percent signs and NULs they hold.
    if (QLoggingCategory::defaultCategory()->isDebugEnabled())
        qt_message_output(QtDebugMsg, QMessageLogContext(nullptr, 0, nullptr, "default"), text);
}

QString shownValue(const QWidget* widget, const QString& value)
{
    const auto* edit = qobject_cast<const QLineEdit*>(widget);
    return edit && edit->echoMode() != QLineEdit::Normal ? QStringLiteral("********") : value;
}

QString hexAddress(const void* object)
{
    return QString::number(reinterpret_cast<quintptr>(object), 16);
}
