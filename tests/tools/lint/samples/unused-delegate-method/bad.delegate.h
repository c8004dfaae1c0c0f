#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariant>

class ZEFPipeFacilityInvocationContext;

enum class State { On, Off };

/* A delegate. */
class Delegate final : public QObject {
    Q_OBJECT
    Q_PROPERTY(int count READ count CONSTANT)

public:
    explicit Delegate(QObject* parent = nullptr);
    int count() const { return m_count; }
    void helper_clicked();

public slots:
    void okay_clicked(ZEFPipeFacilityInvocationContext* context);
    void ok_pressed(ZEFPipeFacilityInvocationContext* context);
    // zefui-lint: ignore unused-delegate-method
    void later_clicked(ZEFPipeFacilityInvocationContext* context);

signals:
    void nameEdit_clicked(ZEFPipeFacilityInvocationContext* context);

private:
    int m_count = 0;
};
