#include "appearance/ProgressBarAccessible.h"

#include "appearance/ProgressBar.h"

namespace veltrano {

namespace {

QAccessibleInterface* describe(const QString& className, QObject* object) {
    // The toolkit asks for the class of the object first, and then for each that it is derived from.
    if (className != QLatin1String(ProgressBar::staticMetaObject.className()))
        return nullptr;
    return new ProgressBarAccessible(qobject_cast<QWidget*>(object));
}

} // namespace

ProgressBarAccessible::ProgressBarAccessible(QWidget* bar)
    : QAccessibleWidget(bar, QAccessible::ProgressBar) {}

void* ProgressBarAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State ProgressBarAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.busy = bar().isIndeterminate();
    state.readOnly = true;
    return state;
}

QString ProgressBarAccessible::text(QAccessible::Text kind) const {
    if (kind != QAccessible::Value)
        return QAccessibleWidget::text(kind);
    return bar().isIndeterminate()
               ? QString()
               : ProgressBar::tr("%1 %").arg(QString::number(bar().fraction() * 100, 'f', 0));
}

QVariant ProgressBarAccessible::currentValue() const {
    return bar().isIndeterminate() ? QVariant() : QVariant(bar().value());
}

QVariant ProgressBarAccessible::maximumValue() const {
    return bar().maxValue();
}

QVariant ProgressBarAccessible::minimumValue() const {
    return bar().minValue();
}

const ProgressBar& ProgressBarAccessible::bar() const {
    return *qobject_cast<const ProgressBar*>(widget());
}

void installProgressBarAccessible() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(describe);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

} // namespace veltrano
