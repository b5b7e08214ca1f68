// Makes pictures of a scene in a thread of its own.
#pragma once

#include <QImage>
#include <QObject>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "apps/qzhost/scene/ScenePainter.h"

namespace app {

struct RenderedScene {
    QImage image;
    SceneView view;
    bool isWhole = false;
};

// One picture at a time; of several requests that wait only the newest is made.
class SceneRenderer : public QObject {
public:
    SceneRenderer();
    ~SceneRenderer() override;

    // Leaves the calling thread at once.
    void Request(ScenePicture picture);
    bool IsBusy() const { return m_wanted != m_done; }

    // In the thread that made this object, when a picture is there.
    std::function<void(RenderedScene)> onReady;

    // In the calling thread.
    static RenderedScene Render(const ScenePicture& picture,
                                const std::function<bool()>& isWanted = {});

private:
    void Work();

    std::mutex m_mutex;
    std::condition_variable m_hasWork;
    std::optional<ScenePicture> m_next;
    std::atomic<int> m_wanted{0};  // number of the newest request
    int m_done = 0;                // number of the newest picture, or of one given up
    bool m_isOver = false;
    std::thread m_thread;
};

}  // namespace app
