#include "sounds/clsControlSite.h"

#include <oaidl.h>
#include <ocidl.h>
#include <oleidl.h>

#include <utility>

namespace velora {
namespace {

/// The container's side. Lives as long as the control holds it.
class Site final : public IOleClientSite, public IOleInPlaceSite {
public:
    explicit Site(HWND window) : window_(window) {}
    virtual ~Site() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override
    {
        *object = nullptr;
        if (id == IID_IUnknown || id == IID_IOleClientSite)
            *object = static_cast<IOleClientSite*>(this);
        else if (id == IID_IOleWindow || id == IID_IOleInPlaceSite)
            *object = static_cast<IOleInPlaceSite*>(this);
        if (!*object)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE SaveObject() noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) noexcept override
    {
        *moniker = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) noexcept override
    {
        *container = nullptr;
        return E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE ShowObject() noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() noexcept override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) noexcept override
    {
        *window = window_;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnUIActivate() noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                               IOleInPlaceUIWindow** document, RECT* place,
                                               RECT* clip,
                                               OLEINPLACEFRAMEINFO* info) noexcept override
    {
        *frame = nullptr;
        *document = nullptr;
        GetClientRect(window_, place);
        *clip = *place;
        info->fMDIApp = FALSE;
        info->hwndFrame = window_;
        info->haccel = nullptr;
        info->cAccelEntries = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) noexcept override { return S_OK; }

private:
    HWND window_;
    ULONG references_ = 1;
};

} // namespace

void clsControlSite::attach(IDispatch* control, HWND window) noexcept
{
    detach();
    if (FAILED(control->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&control_)))) {
        control_ = nullptr;
        return;
    }
    auto* const site = new Site(window);
    control_->SetClientSite(site);
    IPersistStreamInit* fresh = nullptr;
    if (SUCCEEDED(
            control->QueryInterface(IID_IPersistStreamInit, reinterpret_cast<void**>(&fresh)))) {
        fresh->InitNew();
        fresh->Release();
    }
    RECT place;
    GetClientRect(window, &place);
    control_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site, 0, window, &place);
    site->Release();
}

void clsControlSite::detach() noexcept
{
    IOleObject* const control = std::exchange(control_, nullptr);
    if (!control)
        return;
    control->Close(OLECLOSE_NOSAVE);
    control->SetClientSite(nullptr);
    control->Release();
}

} // namespace velora
