// RuntimeClass.h - MFC's run-time class records: a class's name, size and
// base, so that code holding a CWnd* can ask what it really is.
//
//   // in the class:   DECLARE_DYNAMIC(CColorButtonEx)
//   // in its source:  IMPLEMENT_DYNAMIC(CColorButtonEx, CButton)
//   if (wnd->IsKindOf(RUNTIME_CLASS(CColorButtonEx))) ...
//
// Each record is a static member named class<ClassName>, as in MFC.
#pragma once
#include "QMExport.h"

struct CRuntimeClass
{
    const char* m_lpszClassName;
    int m_nObjectSize;
    const CRuntimeClass* m_pBaseClass;  // null for the root

    // True when this record is `base` or derives from it.
    bool IsDerivedFrom(const CRuntimeClass* base) const
    {
        for (const CRuntimeClass* at = this; at != nullptr; at = at->m_pBaseClass)
            if (at == base)
                return true;
        return false;
    }
};

#define RUNTIME_CLASS(theClass) (&theClass::class##theClass)

#define DECLARE_DYNAMIC(theClass)                          \
public:                                                    \
    static const CRuntimeClass class##theClass;            \
    const CRuntimeClass* GetRuntimeClass() const override; \
private:

#define IMPLEMENT_DYNAMIC(theClass, baseClass)                                                          \
    const CRuntimeClass theClass::class##theClass = {#theClass, static_cast<int>(sizeof(theClass)),   \
                                                     RUNTIME_CLASS(baseClass)};                       \
    const CRuntimeClass* theClass::GetRuntimeClass() const { return RUNTIME_CLASS(theClass); }
