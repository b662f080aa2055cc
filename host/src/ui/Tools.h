#pragma once

#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace host {

/// The interactive tools: contexts by name, the commands that make them, and which context is
/// current. The select tool, "selectSuperContext", is always there and takes over whenever the
/// current one has to go. Main thread only.
class Tools {
public:
    static Tools& instance();
    static const char* const selectTool;

    using Creator = void* (*)();

    /// False when a command of that name exists.
    bool registerCommand(const std::string& name, Creator creator);
    /// Leaves and deletes the contexts the command has made. False when it is not registered here.
    bool deregisterCommand(const std::string& name);
    bool isContextCommand(const std::string& name) const { return commands_.count(name) > 0; }

    /// Adds a context under a new name; takes ownership. `command` is the one that made it.
    void add(const std::string& name, const std::string& command,
             std::unique_ptr<MPxContext> context);
    /// Null when there is no context of that name.
    MPxContext* find(const std::string& name) const;
    std::string commandOf(const std::string& name) const;
    /// `stem` and the first free number.
    std::string uniqueName(const std::string& stem) const;
    std::vector<std::string> names() const;
    /// A context that is current is left first. False for the select tool and for unknown names.
    bool remove(const std::string& name);

    /// Never null after startUp.
    MPxContext* current() const { return find(currentName_); }
    const std::string& currentName() const { return currentName_; }
    /// Runs toolOffCleanup of the current context and toolOnSetup of the new one. Choosing the
    /// current one again does both as well. False, and nothing happens, for an unknown name.
    bool setCurrent(const std::string& name);
    /// Makes the select tool current when the current one was made by this command.
    void leaveToolsOf(const std::string& command);
    /// The select tool takes over; when it is current already, nothing happens.
    void leave();

    /// Ends everything: leaves the current tool and deletes all contexts.
    void clear();
    /// A select tool by that name; the standing one is made at start-up and becomes current.
    void addSelectTool(const std::string& name = selectTool);

    /// Called after the current tool, its title, help, image or cursor changed.
    int addListener(std::function<void()> listener);
    void removeListener(int id);
    void changed(const MPxContext* context);

private:
    struct Named {
        std::string command;
        std::unique_ptr<MPxContext> context;
    };

    std::map<std::string, Creator> commands_;
    std::map<std::string, Named> contexts_;
    std::string currentName_;
    bool switching_ = false;
    std::map<int, std::function<void()>> listeners_;
    int lastListener_ = 0;
};

} // namespace host
