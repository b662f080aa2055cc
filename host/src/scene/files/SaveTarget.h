#pragma once
#include <QIODevice>
#include <QString>

#include <functional>
#include <memory>

// Where a scene is written to. The bytes go to a temporary file beside the target; the target is
// replaced in one step by commit(), after they have reached the disk. Until then the previous
// file stays as it was, whatever fails.
namespace host {

class SaveTarget {
public:
    virtual ~SaveTarget();
    virtual bool open() = 0;
    // Writable and seekable once open() has succeeded.
    virtual QIODevice& device() = 0;
    // Everything written so far is on the disk.
    virtual bool sync() = 0;
    virtual bool commit() = 0;
    // Removes the temporary file. Also done by the destructor when commit() did not happen.
    virtual void discard() = 0;
    // Why the last operation failed, in words for the user.
    virtual QString errorString() const = 0;
};

using SaveTargetFactory = std::function<std::unique_ptr<SaveTarget>(const QString& path)>;

std::unique_ptr<SaveTarget> makeFileTarget(const QString& path);

} // namespace host
