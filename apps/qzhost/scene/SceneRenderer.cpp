#include "apps/qzhost/scene/SceneRenderer.h"

#include <utility>

namespace app {

SceneRenderer::SceneRenderer() : m_thread([this] { Work(); }) {}

SceneRenderer::~SceneRenderer() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isOver = true;
        ++m_wanted;
    }
    m_hasWork.notify_one();
    m_thread.join();
}

void SceneRenderer::Request(ScenePicture picture) {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_next = std::move(picture);
        ++m_wanted;
    }
    m_hasWork.notify_one();
}

RenderedScene SceneRenderer::Render(const ScenePicture& picture,
                                    const std::function<bool()>& isWanted) {
    RenderedScene rendered;
    rendered.view = picture.view;
    rendered.image = QImage(picture.view.size, QImage::Format_RGB32);
    rendered.image.fill(picture.look.paper);
    QPainter painter(&rendered.image);
    rendered.isWhole = PaintScene(painter, picture, isWanted);
    return rendered;
}

void SceneRenderer::Work() {
    while (true) {
        std::optional<ScenePicture> picture;
        int number = 0;
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_hasWork.wait(lock, [this] { return m_isOver || m_next.has_value(); });
            if (m_isOver) return;
            picture.swap(m_next);
            number = m_wanted;
        }
        // A view that moves on all the time still gets a picture now and then: what is under way is
        // finished unless the program ends.
        RenderedScene rendered = Render(*picture, [this] {
            const std::lock_guard<std::mutex> lock(m_mutex);
            return !m_isOver;
        });
        // In the other thread: the callback belongs to widgets.
        QMetaObject::invokeMethod(
            this,
            [this, number, result = std::move(rendered)]() mutable {
                m_done = number;
                if (result.isWhole && onReady) onReady(std::move(result));
            },
            Qt::QueuedConnection);
    }
}

}  // namespace app
