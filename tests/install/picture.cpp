// A program of somebody else: writes a picture to the file that its argument names.
#include <backends/cairo/picture.h>

#include <iostream>

int main(int argc, char** argv) {
    using nodeline::cairo::MakePicture;
    using nodeline::cairo::PictureFormat;

    std::string error;
    const auto picture = MakePicture(PictureFormat::kSvg, {40.0, 20.0}, 1.0, &error);
    if (argc == 2 && picture != nullptr) {
        picture->Draw(
            [](paintcore::IPainter& painter) { painter.Rectangle(5.0, 5.0, 35.0, 15.0); });
        if (picture->Save(argv[1], &error)) return 0;
    }
    std::cerr << error << '\n';
    return 1;
}
