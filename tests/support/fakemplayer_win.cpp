#include "support/fakemplayer_win.h"

#include "base/files.h"
#include "base/text.h"
#include "settings/clsRegistry.h"
#include "sounds/frmMPlayer.h"
#include "sounds/modMediaPlayer.h"
#include "support/process_win.h"

#include <oaidl.h>
#include <oleauto.h>
#include <oleidl.h>

#include <cstring>
#include <stdexcept>

namespace velora::test {
namespace {

// Made for the tests alone.
constexpr CLSID kClass = {
    0x5b0e7c52, 0x1f7b, 0x4f0e, {0x9a, 0x61, 0x7d, 0x2c, 0x4e, 0x90, 0x11, 0x35}};
constexpr wchar_t kClassText[] = L"{5B0E7C52-1F7B-4F0E-9A61-7D2C4E901135}";

const wchar_t* const kNames[] = {L"FileName",  L"Play",     L"Stop",           L"Pause",
                                 L"PlayState", L"Duration", L"CurrentPosition"};
enum Name { fileName, play, stop, pause, playState, duration, currentPosition };

/// The control. Of an OLE object it has what a container calls.
class Control final : public IDispatch, public IOleObject {
public:
    explicit Control(FakeMediaPlayer& test) : test_(test) { ++test_.living; }
    virtual ~Control() { --test_.living; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override
    {
        *object = nullptr;
        if (id == IID_IUnknown || id == IID_IDispatch)
            *object = static_cast<IDispatch*>(this);
        else if (id == IID_IOleObject)
            *object = static_cast<IOleObject*>(this);
        if (*object)
            AddRef();
        return *object ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) noexcept override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                            DISPID* ids) noexcept override
    {
        for (DISPID id = 0; id < static_cast<DISPID>(std::size(kNames)); ++id)
            if (std::wcscmp(names[0], kNames[id]) == 0)
                return *ids = id, S_OK;
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* values,
                                     VARIANT* answer, EXCEPINFO*, UINT*) noexcept override
    {
        if (test_.refuses)
            return E_FAIL;
        if (kind & DISPATCH_PROPERTYPUT) {
            if (id != fileName || values->cArgs != 1 || values->rgvarg->vt != VT_BSTR)
                return DISP_E_MEMBERNOTFOUND;
            test_.calls.push_back(std::wstring(L"FileName=") + values->rgvarg->bstrVal);
            return S_OK;
        }
        switch (id) {
        case play: test_.state = 2; break;
        case stop: test_.state = 0; break;
        case pause: test_.state = 1; break;
        case playState:
            answer->vt = VT_I4;
            answer->lVal = test_.state;
            return S_OK;
        case duration:
        case currentPosition:
            answer->vt = VT_R8;
            answer->dblVal = id == duration ? test_.duration : test_.position;
            return S_OK;
        default: return DISP_E_MEMBERNOTFOUND;
        }
        test_.calls.push_back(kNames[id]);
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) noexcept override
    {
        test_.calls.push_back(site ? L"site" : L"no site");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DoVerb(LONG, LPMSG, IOleClientSite* site, LONG, HWND parent,
                                     LPCRECT) noexcept override
    {
        IOleInPlaceSite* place = nullptr;
        HWND window = nullptr;
        if (FAILED(site->QueryInterface(IID_IOleInPlaceSite, reinterpret_cast<void**>(&place))))
            return E_FAIL;
        if (SUCCEEDED(place->GetWindow(&window)) && window == parent)
            test_.window = window;
        place->Release();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Close(DWORD) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite**) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) noexcept override
    {
        return no();
    }
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) noexcept override
    {
        return no();
    }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) noexcept override
    {
        return no();
    }
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB**) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE Update() noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE IsUpToDate() noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID*) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR*) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD, SIZEL*) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD, SIZEL*) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink*, DWORD*) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA**) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD, DWORD*) noexcept override { return no(); }
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) noexcept override { return no(); }

private:
    static HRESULT no() noexcept { return E_NOTIMPL; }
    FakeMediaPlayer& test_;
    ULONG references_ = 1;
};

class Factory final : public IClassFactory {
public:
    explicit Factory(FakeMediaPlayer& test) : test_(test) {}
    virtual ~Factory() = default;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override
    {
        const bool known = id == IID_IUnknown || id == IID_IClassFactory;
        *object = known ? this : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) noexcept override
    {
        auto* const made = new Control(test_);
        const HRESULT result = made->QueryInterface(id, object);
        made->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) noexcept override { return S_OK; }

private:
    FakeMediaPlayer& test_;
    ULONG references_ = 1;
};

/// Wine's COM looks for a name among the machine's classes only.
clsRegistry nameKey(const wchar_t* below)
{
    clsRegistry key;
    key.ClassKey(HKEY_CLASSES_ROOT);
    key.SectionKey(std::wstring(frmMPlayer::kProgramId) + below);
    return key;
}

/// One of the companion modules, its version changed to 6.4.
std::string moduleOfVersion()
{
    std::string bytes = readFile(buildFolder() + L"\\orverr.dll").value_or("");
    const std::size_t info = bytes.find("\xBD\x04\xEF\xFE");
    if (info == bytes.npos)
        throw std::runtime_error("no module with a version to copy");
    constexpr WORD version[] = {4, 6};
    std::memcpy(&bytes[info + 8], version, sizeof version);
    return bytes;
}

} // namespace

FakeMediaPlayer::FakeMediaPlayer()
{
    oleInitialised_ = SUCCEEDED(OleInitialize(nullptr));
    nameKey(L"\\CLSID").Value(RegValue(std::wstring(kClassText)));
    auto* const factory = new Factory(*this);
    const HRESULT result =
        CoRegisterClassObject(kClass, factory, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                              REGCLS_MULTIPLEUSE, &classObject_);
    factory->Release();
    if (FAILED(result))
        throw std::runtime_error("the class could not be registered");
    const std::wstring path = folder_.file(L"msdxm.ocx");
    replaceFile(path, moduleOfVersion());
    lookForMediaPlayer(to1252(path));
}

FakeMediaPlayer::~FakeMediaPlayer()
{
    CoRevokeClassObject(classObject_);
    nameKey(L"\\CLSID").DeleteKey();
    nameKey(L"").DeleteKey();
    lookForMediaPlayer();
    if (oleInitialised_)
        OleUninitialize();
}

} // namespace velora::test
