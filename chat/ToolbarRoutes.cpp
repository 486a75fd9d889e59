#include "chat/ToolbarRoutes.h"

namespace velora {

ToolbarRoutes& toolbarRoutes()
{
    static ToolbarRoutes routes;
    return routes;
}

} // namespace velora
