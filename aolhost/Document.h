#pragma once
// "AOL Child": a window of AOL's workspace. Its controls are built at once in the opener's handler,
// or later from its own queue, as the options say; what arrives before that is kept by the
// documents themselves and shown when they are built.
#include "aolhost/Page.h"

namespace aolhost {

class Document : public Page {
public:
    static void registerClasses();

    bool built() const { return built_; }
    /// Builds the controls that were to come later.
    void buildWaiting();
    void activate();
    /// In front of the other documents, with AOL itself in front.
    bool inFront() const;
    void close();

protected:
    enum class Arrival { toFront, behind };
    void open(const std::wstring& caption, SIZE size, Arrival arrival = Arrival::toFront,
              const wchar_t* className = L"AOL Child");

    virtual void build() = 0;
    virtual void layout(int width, int height) = 0;
    virtual void activated() {}
    /// The control that takes the focus when the document does.
    virtual HWND firstFocus() const { return nullptr; }

    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT classDefault(UINT message, WPARAM wParam, LPARAM lParam) override;
    ~Document() override;

private:
    void makeChild(const std::wstring& caption, SIZE size, const wchar_t* className);
    void buildNow();
    void relayout();
    bool built_ = false;
    HWND lastFocus_ = nullptr;
};

} // namespace aolhost
