#include "view/movie_writer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>

#include <cstdio>

namespace tvw::rgs::view {

namespace {

constexpr int kPngQuality = 85;       ///< 0 packs most, 100 not at all: packing hard is slower than drawing
constexpr int kLongestWait = 60'000; ///< [ms], for ffmpeg to take a picture

QImage imageOf(const Picture& picture)
{
    return {picture.rgba.data(), picture.width, picture.height, 4 * picture.width,
            QImage::Format_RGBX8888};
}

Status savePng(const Picture& picture, const QString& path)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && imageOf(picture).save(&file, "PNG", kPngQuality) && file.commit())
        return {};
    return Status::failure(path.toStdString() + ": " + file.errorString().toStdString());
}

class StillWriter final : public MovieWriter
{
public:
    explicit StillWriter(QString path) : path_(std::move(path)) {}
    Status add(const Picture& picture, int) override
    {
        picture_ = picture;
        return {};
    }
    Status finish() override { return savePng(picture_, path_); }

private:
    QString path_;
    Picture picture_;
};

class FolderWriter final : public MovieWriter
{
public:
    explicit FolderWriter(QString path) : path_(std::move(path)) {}
    Status add(const Picture& picture, int frame) override
    {
        return savePng(picture,
                       QDir(path_).filePath(QString("frame-%1.png").arg(frame, 5, 10, QChar('0'))));
    }
    Status finish() override { return {}; }

private:
    QString path_;
};

/// Raw frames into ffmpeg's input, the film beside its place until it is whole.
class FilmWriter final : public MovieWriter
{
public:
    FilmWriter(QString path, QString program) : path_(std::move(path)), program_(std::move(program))
    {
    }
    ~FilmWriter() override
    {
        if (process_.state() != QProcess::NotRunning) {
            process_.kill();
            process_.waitForFinished(kLongestWait);
        }
        QFile::remove(partPath());
    }

    Status start(int width, int height, double framesPerSecond)
    {
        process_.setProcessChannelMode(QProcess::MergedChannels);
        process_.start(program_, {"-hide_banner", "-loglevel",
                                  "error",        "-y",
                                  "-f",           "rawvideo",
                                  "-pix_fmt",     "rgba",
                                  "-s",           QString("%1x%2").arg(width).arg(height),
                                  "-r",           QString::number(framesPerSecond, 'g', 12),
                                  "-i",           "-",
                                  "-vf",          "pad=ceil(iw/2)*2:ceil(ih/2)*2",
                                  "-c:v",         "libx264",
                                  "-preset",      "veryfast",
                                  "-crf",         "18",
                                  "-pix_fmt",     "yuv420p",
                                  "-movflags",    "+faststart",
                                  "-f",           "mp4",
                                  partPath()});
        return process_.waitForStarted(kLongestWait) ? Status() : failed();
    }

    Status add(const Picture& picture, int) override
    {
        process_.write(reinterpret_cast<const char*>(picture.rgba.data()),
                       static_cast<qint64>(picture.rgba.size()));
        while (process_.bytesToWrite() > 0) {
            if (!process_.waitForBytesWritten(kLongestWait))
                return failed();
        }
        return {};
    }

    Status finish() override
    {
        process_.closeWriteChannel();
        const bool done = process_.waitForFinished(10 * kLongestWait);
        if (!done || process_.exitStatus() != QProcess::NormalExit || process_.exitCode() != 0)
            return failed();
        // QFile::rename does not replace; rename(2) does.
        if (std::rename(QFile::encodeName(partPath()).constData(),
                        QFile::encodeName(path_).constData()) != 0)
            return Status::failure(path_.toStdString() + ": can't be replaced");
        return {};
    }

private:
    [[nodiscard]] QString partPath() const { return path_ + ".part"; }
    Status failed()
    {
        const QString said = QString::fromLocal8Bit(process_.readAll()).simplified();
        return Status::failure(path_.toStdString() + ": ffmpeg failed: " +
                               (said.isEmpty() ? process_.errorString() : said).toStdString());
    }

    QString path_, program_;
    QProcess process_;
};

} // namespace

Result<std::unique_ptr<MovieWriter>> MovieWriter::make(const std::string& path, int width,
                                                       int height, double framesPerSecond)
{
    using Made = Result<std::unique_ptr<MovieWriter>>;
    const QString target = QString::fromStdString(path);
    const QString ending = QFileInfo(target).suffix().toLower();
    if (ending == "png")
        return Made(std::make_unique<StillWriter>(target));
    if (ending == "mp4") {
        const QString program = QStandardPaths::findExecutable("ffmpeg");
        if (program.isEmpty())
            return Made::failure("a film needs the program ffmpeg (package ffmpeg); a folder "
                                 "gets single pictures");
        auto film = std::make_unique<FilmWriter>(target, program);
        if (const Status started = film->start(width, height, framesPerSecond); !started)
            return Made::failure(started.reason());
        return Made(std::move(film));
    }
    if (!ending.isEmpty() && !QFileInfo(target).isDir())
        return Made::failure(path + ": a playblast is an .mp4, a .png or a folder");
    if (!QDir().mkpath(target))
        return Made::failure(path + ": this folder can't be made");
    return Made(std::make_unique<FolderWriter>(target));
}

} // namespace tvw::rgs::view
