#pragma once
// What a test of a window begins and ends with.
#include "settings/Options.h"
#include "support/memory_store.h"
#include "ui/Form.h"
#include "ui/MessageLoop.h"

namespace velora::test {

/// Options in memory, boxes that stay until they are answered; no form is left at the end.
struct FormScope : StoreScope {
    FormScope() { opt::General::AutoCloseMsgBox.set(false); }
    ~FormScope()
    {
        Form::unloadAll();
        doEvents();
    }
};

} // namespace velora::test
