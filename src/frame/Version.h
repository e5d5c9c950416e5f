// Version.h - the library's source revision text.
//
//   const wchar_t* v = QM::GetLibVersionNumber();
//   // "[ 1.42 ]-[ 2012/09/18 02:56:06 ]-[ qmbuild ]"
#pragma once
#include "QMExport.h"

namespace QM {

// The revision, date and author of the library's source, each in brackets
// with one blank inside on either side. The text lives for the whole
// process; copy it before calling again from another thread.
QM_API const wchar_t* GetLibVersionNumber();

}  // namespace QM
