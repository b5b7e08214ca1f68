// A grid of texts with row selection: a small class over the report view of the list control.
#pragma once

#include <vector>

class CGridCtrl : public CListCtrl {
    DECLARE_DYNAMIC(CGridCtrl)

public:
    // Makes the columns anew.
    //
    // pHeaders  texts separated by ';'
    // pWidths   percentages of the grid's client width now, separated by ';', each cut to whole
    //           pixels; "+" gives the column what the others leave
    void SetColumns(const ACHAR* pHeaders, const ACHAR* pWidths);

    // Gives the columns their shares of the client width as it is now.
    void FitColumns();

    // Shows these rows, each with one text a column, in place of those there are. Rows that stay
    // keep their selection, and the grid stays scrolled as far as there are rows; without any row
    // both are lost.
    void SetRows(const std::vector<std::vector<CString>>& rows);

    // Indexes of the selected rows from 0, ascending.
    std::vector<int> GetSelectedRows() const;
    // Selects exactly these rows; indexes that are no row's are ignored.
    void SelectRows(const std::vector<int>& rows);

protected:
    DECLARE_MESSAGE_MAP()

private:
    CString m_strWidths;
    int m_nColumns = 0;
};

// Pixel widths of the columns for a width text; see SetColumns. A text that is no number counts 0.
std::vector<int> GetColumnWidths(const ACHAR* pWidths, int nClientWidth);
