#pragma once

#include <string>
#include <vector>

namespace host {

class View;

/// The views there are, in the order they were made. None owned.
class Views {
public:
    static Views& instance();

    const std::vector<View*>& all() const { return views_; }
    View* byId(int id) const;
    View* byPanel(const std::string& panelName) const;

    /// The view with the focus; null when there is none.
    View* active() const { return active_; }
    /// Ignored for a view that is not registered.
    void setActive(View* view);

    /// Asks every view to paint.
    void refreshAll(bool now = false);

private:
    friend class View;
    void add(View* view);
    void remove(View* view);

    std::vector<View*> views_;
    View* active_ = nullptr;
};

} // namespace host
