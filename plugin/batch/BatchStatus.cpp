#include "StdAfx.h"
#include "BatchStatus.h"

namespace {

CString GetText(BatchStatus status, const ACHAR* pFailed) {
    switch (status) {
        case kBatchNotStarted:
            return _T("未开始");
        case kBatchDone:
            return _T("已完成");
        case kBatchFailed:
            return pFailed;
        default:
            return CString();
    }
}

}  // namespace

CString GetExecStatusText(BatchStatus status) { return GetText(status, _T("生成错误")); }
CString GetExportStatusText(BatchStatus status) { return GetText(status, _T("导出错误")); }
