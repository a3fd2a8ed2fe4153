/// Where the pictures of a playblast go.
#pragma once

#include "util/result.h"
#include "view/picture.h"

#include <memory>
#include <string>

namespace tvw::rgs::view {

class MovieWriter
{
public:
    /// By the path: ".mp4" a film through the program ffmpeg, ".png" the one picture, else a folder
    /// that gets "frame-00001.png" and so on, numbered by the frame. The file named appears at
    /// `finish` and not before. The reason when it can't be written, or ffmpeg is not there.
    static Result<std::unique_ptr<MovieWriter>> make(const std::string& path, int width, int height,
                                                     double framesPerSecond);
    virtual ~MovieWriter() = default;

    virtual Status add(const Picture& picture, int frame) = 0;
    virtual Status finish() = 0; ///< without it nothing stays but a folder's pictures
};

} // namespace tvw::rgs::view
