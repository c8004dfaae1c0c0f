#include "Script.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QKeySequence>

#include <optional>

namespace {

std::optional<Script::Step> stepFrom(const QJsonObject& object)
{
    using Step = Script::Step;
    const auto text = [&](const char* member) { return object.value(QLatin1String(member)).toString(); };
    if (object.contains(QLatin1String("wait")))
        return Step{Step::Wait, QString(), text("wait")};
    if (object.contains(QLatin1String("type")))
        return Step{Step::Type, text("type"), text("into")};
    if (object.contains(QLatin1String("click")))
        return Step{Step::Click, QString(), text("click")};
    if (object.contains(QLatin1String("press")) && QKeySequence(text("press")).count() == 1)
        return Step{Step::Press, text("press"), text("on")};
    if (object.contains(QLatin1String("screenshot")))
        return Step{Step::Screenshot, text("screenshot"), QString()};
    return std::nullopt;
}

} // namespace

Script Script::fromFile(const QString& path, QString* error)
{
    error->clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = u"cannot read the script " + path + u": " + file.errorString();
        return Script();
    }
    QJsonParseError parseError;
    const QJsonObject forms = QJsonDocument::fromJson(file.readAll(), &parseError).object();
    if (parseError.error != QJsonParseError::NoError) {
        *error = u"the script " + path + u" is not JSON: " + parseError.errorString();
        return Script();
    }
    Script script;
    for (auto form = forms.begin(); form != forms.end(); ++form) {
        const QJsonArray steps = form->toArray();
        for (const QJsonValue entry : steps) {
            const std::optional<Step> step = stepFrom(entry.toObject());
            if (!step) {
                *error = u"the script " + path + u" has an unknown step for the form " + form.key();
                return Script();
            }
            script.m_steps[form.key()].append(*step);
        }
    }
    return script;
}
