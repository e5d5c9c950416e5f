// StandIn.h - plumbing shared by the stand-in automation servers and the test
// process's fake CAD host: an IDispatch whose members come from a name table,
// a call's arguments in the caller's order, exceptions raised as servers do.
//
//   class Range : public standin::Object {
//       Range() : Object(L"Range", {L"Item", L"NumberFormat"}) {}
//       HRESULT Call(int member, WORD flags, standin::Args& a, VARIANT* result) override;
//   };
#pragma once
#include <windows.h>
#include <oleauto.h>

#include <functional>
#include <string>
#include <vector>

namespace standin {

// The arguments of one call, first first; a property put's value last.
struct Args
{
    std::vector<VARIANT*> v;
    EXCEPINFO* exception = nullptr;

    size_t Count() const { return v.size(); }
    bool Given(size_t i) const;   // false for an omitted argument
    std::wstring Text(size_t i) const;   // empty when it has none
    long Long(size_t i, long missing) const;
};

// `description` as the server's exception text; returns DISP_E_EXCEPTION.
HRESULT Raise(Args& a, HRESULT scode, const std::wstring& description);
HRESULT Return(VARIANT* result, IDispatch* object);   // takes the reference over
HRESULT Return(VARIANT* result, long value, VARTYPE vt = VT_I4);
HRESULT Return(VARIANT* result, const std::wstring& text);

class Object : public IDispatch
{
public:
    Object(const wchar_t* className, std::vector<const wchar_t*> members)
        : m_class(className), m_members(std::move(members)) {}
    virtual ~Object() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&m_refs); }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const LONG left = InterlockedDecrement(&m_refs);
        return left == 0 ? (delete this, 0) : left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* exception, UINT*) override;

    // Member `member` (its index in the table) with the call's arguments.
    virtual HRESULT Call(int member, WORD flags, Args& a, VARIANT* result) = 0;
    // The object behind an IDispatch this server made, or null.
    static Object* From(IDispatch* dispatch);

    const std::wstring m_class;

protected:
    // A record of the call: "get Workbook.Worksheets", "put Range.Item(2, 1) = \"007\"".
    std::wstring CallText(int member, WORD flags, const Args& a) const;

private:
    LONG m_refs = 1;
    const std::vector<const wchar_t*> m_members;
};

// A class object that lives as long as the server: its reference count is not kept.
class Factory : public IClassFactory
{
public:
    explicit Factory(std::function<IDispatch*()> make) : m_make(std::move(make)) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        *object = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory) ? this : nullptr;
        return *object != nullptr ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override
    {
        *object = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        IDispatch* made = m_make();
        const HRESULT hr = made->QueryInterface(iid, object);
        made->Release();
        return hr;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    std::function<IDispatch*()> m_make;
};

IDispatch* MakeConnection();
IDispatch* MakeRecordset();
IDispatch* MakeExcel();

}  // namespace standin
