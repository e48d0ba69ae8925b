#include "app/DescriptorWatch.h"

#include <QAbstractEventDispatcher>

#include <glib.h>

#include <memory>
#include <new>

namespace kestrel {

namespace {
// GLib serves a ready source before all sources of a lower priority, and leaves these for a later
// turn. So a descriptor that is always ready gives up every 128th turn. A stroke pays for that with
// one more poll.
constexpr unsigned TurnsInARow = 127;

// GLib owns and frees the memory of a source, and begins it with its own part.
struct Source {
    GSource glib;
    GPollFD polled;
    unsigned turns;
    std::function<void()> ready;
};

Source& sourceOf(GSource* source)
{
    return *reinterpret_cast<Source*>(source);
}

gboolean isReady(GSource* glib)
{
    Source& source = sourceOf(glib);
    if (source.polled.revents == 0)
        return FALSE;
    if (source.turns == TurnsInARow) {
        source.turns = 0;
        return FALSE;
    }
    ++source.turns;
    return TRUE;
}

// GLib holds a reference to the source meanwhile, so `ready` may destroy its watch.
gboolean callReady(GSource* source, GSourceFunc, gpointer)
{
    sourceOf(source).ready();
    return G_SOURCE_CONTINUE;
}

void destroyReady(GSource* source)
{
    std::destroy_at(&sourceOf(source).ready);
}

GSourceFuncs Functions { nullptr, isReady, callReady, destroyReady, nullptr, nullptr };

class GlibWatch final : public MainLoop::Watch {
public:
    GlibWatch(int descriptor, const std::function<void()>& ready)
        : m_source(g_source_new(&Functions, sizeof(Source)))
    {
        Source& source = sourceOf(m_source);
        new (&source.ready) std::function<void()>(ready);
        source.polled = { descriptor, G_IO_IN | G_IO_HUP | G_IO_ERR, 0 };
        // g_source_add_unix_fd() would make the source ready whatever isReady() says.
        g_source_add_poll(m_source, &source.polled);
        g_source_set_priority(m_source, G_PRIORITY_HIGH);
        g_source_set_can_recurse(m_source, TRUE);
        g_source_attach(m_source, nullptr);
    }
    ~GlibWatch() override
    {
        g_source_destroy(m_source);
        g_source_unref(m_source);
    }
    GlibWatch(const GlibWatch&) = delete;
    GlibWatch& operator=(const GlibWatch&) = delete;

private:
    GSource* m_source;
};
} // namespace

std::unique_ptr<MainLoop::Watch> watchThroughGlib(
    int descriptor, const std::function<void()>& ready)
{
    const auto* loop = QAbstractEventDispatcher::instance();
    if (!loop || !loop->inherits("QEventDispatcherGlib"))
        return nullptr;
    return std::make_unique<GlibWatch>(descriptor, ready);
}

} // namespace kestrel
