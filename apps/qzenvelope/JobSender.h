// What a worker tells while it runs a drawing.
#pragma once

#include <utility>

#include "apps/qzenvelope/JobMessage.h"
#include "apps/qzenvelope/WorkerPool.h"
#include "host/sys/process_end.h"
#include "product/tool/DrawingRun.h"
#include "product/base/Words.h"

namespace app {

using product::Tr;

// Sends on to the parent what a drawing's run tells.
class Sender : public product::ToolListener {
public:
    // timeLimit  of each tool, seconds; 0: none
    Sender(const Send& send, bool withPictures, double timeLimit)
        : m_send(send), m_withPictures(withPictures), m_timeLimit(timeLimit) {}

    void OnToolBegins(size_t tool) override {
        JobMessage message;
        message.tool = tool;
        m_send(ToText(message, false));
        host::LimitTime(m_timeLimit, Tr("the tool"));
    }
    void OnToolEnds(size_t tool, product::ToolResult&& result) override {
        host::LimitTime(0, "");
        JobMessage message;
        message.kind = JobMessage::ToolEnds;
        message.tool = tool;
        message.result = std::move(result);
        m_send(ToText(message, m_withPictures));
    }
    void Finish(product::DrawingResult&& result) {
        JobMessage message;
        message.kind = JobMessage::DrawingEnds;
        message.drawing = std::move(result);
        m_send(ToText(message, false));
    }

private:
    const Send& m_send;
    bool m_withPictures;
    double m_timeLimit;
};

}  // namespace app
