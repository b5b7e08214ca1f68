#include "StdAfx.h"
#include "DialogLayout.h"

#include <algorithm>

void CDialogLayout::Start(const CWnd& dialog, const std::vector<SAnchor>& anchors) {
    CRect rect;
    dialog.GetClientRect(&rect);
    m_client = rect.Size();
    dialog.GetWindowRect(&rect);
    m_window = rect.Size();
    m_places.clear();
    for (const SAnchor& anchor : anchors) {
        if (const CWnd* const pControl = dialog.GetDlgItem(anchor.m_nControl)) {
            pControl->GetWindowRect(&rect);
            dialog.ScreenToClient(&rect);
            m_places.push_back({anchor, rect});
        }
    }
}

void CDialogLayout::Resize(const CWnd& dialog, int nWidth, int nHeight) const {
    const int nRight = (std::max)(0, nWidth - static_cast<int>(m_client.cx));
    const int nDown = (std::max)(0, nHeight - static_cast<int>(m_client.cy));
    for (const SPlace& place : m_places) {
        CWnd* const pControl = dialog.GetDlgItem(place.m_anchor.m_nControl);
        if (pControl == nullptr) {
            continue;
        }
        const CRect& rect = place.m_rect;
        pControl->MoveWindow(rect.left + (place.m_anchor.m_bMovesRight ? nRight : 0), rect.top,
                             rect.Width() + (place.m_anchor.m_bGrowsRight ? nRight : 0),
                             rect.Height() + (place.m_anchor.m_bGrowsDown ? nDown : 0));
    }
}

void CDialogLayout::Limit(MINMAXINFO& info) const {
    if (!m_places.empty()) {
        info.ptMinTrackSize.x = m_window.cx;
        info.ptMinTrackSize.y = m_window.cy;
    }
}
