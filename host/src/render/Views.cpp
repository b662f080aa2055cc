#include "render/Views.h"

#include "foundation/Events.h"
#include "render/View.h"

#include <algorithm>

namespace host {

Views& Views::instance() {
    static Views views;
    return views;
}

View* Views::byId(int id) const {
    for (View* view : views_)
        if (view->id() == id)
            return view;
    return nullptr;
}

View* Views::byPanel(const std::string& panelName) const {
    for (View* view : views_)
        if (view->panelName() == panelName)
            return view;
    return nullptr;
}

void Views::setActive(View* view) {
    if (view == active_ || std::find(views_.begin(), views_.end(), view) == views_.end())
        return;
    active_ = view;
    events::emit("ActiveViewChanged");
}

void Views::refreshAll(bool now) {
    // A paint may open or close panels.
    const std::vector<View*> views = views_;
    for (View* view : views)
        if (std::find(views_.begin(), views_.end(), view) != views_.end())
            view->refresh(now);
}

void Views::add(View* view) {
    views_.push_back(view);
    if (!active_)
        active_ = view;
}

void Views::remove(View* view) {
    views_.erase(std::remove(views_.begin(), views_.end(), view), views_.end());
    if (active_ != view)
        return;
    active_ = views_.empty() ? nullptr : views_.front();
    events::emit("ActiveViewChanged");
}

} // namespace host
