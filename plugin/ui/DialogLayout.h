// What the controls of a dialog do when the user pulls its frame.
#pragma once

#include <vector>

#include "StdAfx.h"

// How one control follows: it moves or grows by as much as the dialog has grown.
struct SAnchor {
    int m_nControl;
    bool m_bMovesRight;
    bool m_bGrowsRight;
    bool m_bGrowsDown;
};

// Knows the places of controls as the dialog was made, which is also the smallest size it takes.
class CDialogLayout {
public:
    // To be called by OnInitDialog. Controls that the dialog does not have are passed over.
    void Start(const CWnd& dialog, const std::vector<SAnchor>& anchors);
    // By OnSize, with the size of the client area.
    void Resize(const CWnd& dialog, int nWidth, int nHeight) const;
    // By OnGetMinMaxInfo; before the start nothing is known, and nothing changed.
    void Limit(MINMAXINFO& info) const;

private:
    struct SPlace {
        SAnchor m_anchor;
        CRect m_rect;  // in the dialog's client area
    };
    std::vector<SPlace> m_places;
    CSize m_client;
    CSize m_window;
};
