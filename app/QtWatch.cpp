#include "app/DescriptorWatch.h"

#include <QSocketNotifier>

namespace kestrel {

namespace {
class QtWatch final : public MainLoop::Watch {
public:
    QtWatch(int descriptor, const std::function<void()>& ready)
        : m_notifier(new QSocketNotifier(descriptor, QSocketNotifier::Read))
    {
        QObject::connect(m_notifier, &QSocketNotifier::activated, m_notifier, ready);
    }
    ~QtWatch() override
    {
        m_notifier->setEnabled(false);
        m_notifier->deleteLater();
    }

private:
    QSocketNotifier* m_notifier;
};
} // namespace

std::unique_ptr<MainLoop::Watch> watchThroughQt(int descriptor, const std::function<void()>& ready)
{
    return std::make_unique<QtWatch>(descriptor, ready);
}

} // namespace kestrel
