#pragma once

#include <QSize>

#include <optional>
#include <string>
#include <vector>

namespace host {

/// What the command line asks for.
struct Options {
    struct Script {
        bool isFile = false; ///< else the text itself
        std::string text;
    };

    bool batch = false;
    bool help = false;
    std::vector<std::string> plugins;
    std::string open;
    std::vector<Script> scripts; ///< in the order given
    std::string replay;
    std::string renderer = "vp2"; ///< "vp2" or "legacy"
    std::optional<QSize> size;
    std::string screenshot;

    /// Throws UsageError.
    static Options parse(const std::vector<std::string>& arguments);
    static std::string usage();
};

/// A command line that makes no sense; the message says why.
struct UsageError {
    std::string message;
};

} // namespace host
