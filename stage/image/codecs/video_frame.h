// From a decoded video frame to a picture.
#pragma once

#include "stage/image/codecs/libav.h"
#include "stage/image/picture.h"

namespace stage {

// Converts frames to R'G'B'. Frames of 8 bits give SampleType::U8, deeper ones U16. Colour
// difference frames go through the matrix that the frame names (BT.601 below 720 rows and BT.709
// above when it names none); narrow range is expanded to 0..full scale. No transfer function is
// applied.
class VideoFrameConverter {
  public:
    // Throws PictureError with the reason. The pixel aspect stays 1.
    Picture convert(const AVFrame &frame);

  private:
    void prepare(const AVFrame &frame, AVPixelFormat target);

    libav::Owner<SwsContext> scaler_;
};

}  // namespace stage
