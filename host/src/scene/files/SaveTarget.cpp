#include "scene/files/SaveTarget.h"

#include <QFileInfo>
#include <QSaveFile>

#if defined(_WIN32)
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace host {

namespace {

// QSaveFile syncs too, but cannot say that it failed; an unreported failure here is a scene that
// exists only until the power goes.
bool syncHandle(int handle) {
    if (handle < 0)
        return true;
#if defined(_WIN32)
    return _commit(handle) == 0;
#else
    return ::fsync(handle) == 0 || errno == EINVAL || errno == EROFS;
#endif
}

// Makes the rename itself durable. Not every file system can, so failure is no error.
void syncDirectoryOf(const QString& path) {
#if !defined(_WIN32)
    const QByteArray directory = QFileInfo(path).absolutePath().toLocal8Bit();
    const int handle = ::open(directory.constData(), O_RDONLY | O_DIRECTORY);
    if (handle < 0)
        return;
    ::fsync(handle);
    ::close(handle);
#else
    (void)path;
#endif
}

class FileTarget : public SaveTarget {
public:
    explicit FileTarget(const QString& path) : file_(path) {}

    bool open() override {
        const QFileInfo info(file_.fileName());
        if (info.exists() && !info.isFile()) {
            error_ = QStringLiteral("Not a regular file");
            return false;
        }
        if (info.exists() && !info.isWritable()) {
            error_ = QStringLiteral("The file is write-protected");
            return false;
        }
        return keepError(file_.open(QIODevice::WriteOnly));
    }
    QIODevice& device() override { return file_; }
    bool sync() override {
        if (!file_.flush())
            return keepError(false);
        if (syncHandle(file_.handle()))
            return true;
        error_ = qt_error_string(errno);
        return false;
    }
    bool commit() override {
        if (!keepError(file_.commit()))
            return false;
        syncDirectoryOf(file_.fileName());
        return true;
    }
    void discard() override {
        if (!file_.isOpen())
            return;
        file_.cancelWriting();
        file_.commit();
    }
    QString errorString() const override { return error_; }

private:
    bool keepError(bool ok) {
        if (!ok)
            error_ = file_.errorString();
        return ok;
    }

    QSaveFile file_;
    QString error_;
};

} // namespace

SaveTarget::~SaveTarget() = default;

std::unique_ptr<SaveTarget> makeFileTarget(const QString& path) {
    return std::make_unique<FileTarget>(path);
}

} // namespace host
