#include <apps/cli/commands.h>

#ifdef NODELINE_WITH_CAIRO
#include <backends/cairo/picture.h>

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <system_error>
#endif

namespace nodeline::cli {

#ifdef NODELINE_WITH_CAIRO

namespace {

namespace fs = std::filesystem;

using cairo::Picture;
using cairo::PictureFormat;

PictureFormat format_of(const RenderOptions& options) {
    if (!options.format.empty()) return *cairo::GetPictureFormat("." + options.format);
    if (options.output.empty() || options.output == "-") return PictureFormat::kSvg;
    if (const auto format = cairo::GetPictureFormat(options.output)) return *format;
    if (fs::path(options.output).has_extension()) {
        throw Failure(kWrongUsage, options.output +
                                       ": the name ends in none of .svg, .pdf and .png; --format "
                                       "chooses the format");
    }
    return PictureFormat::kSvg;
}

const char* ending_of(PictureFormat format) {
    switch (format) {
        case PictureFormat::kPdf:
            return ".pdf";
        case PictureFormat::kPng:
            return ".png";
        case PictureFormat::kSvg:
            break;
    }
    return ".svg";
}

std::string output_of(const RenderOptions& options, PictureFormat format) {
    if (options.graph.input == "-") {
        if (options.output.empty() && isatty(STDOUT_FILENO) != 0) {
            throw Failure(kWrongUsage,
                          "standard input has no name to put a picture beside; -o names one");
        }
        return options.output.empty() ? "-" : options.output;
    }
    std::string output =
        options.output.empty()
            ? fs::path(options.graph.input).replace_extension(ending_of(format)).string()
            : options.output;
    std::error_code ignored;
    if (fs::equivalent(output, options.graph.input, ignored)) {
        throw Failure(kWrongUsage, output + ": the picture would take the place of the graph");
    }
    return output;
}

std::string seconds_since(std::chrono::steady_clock::time_point start) {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    char text[32];
    std::snprintf(text, sizeof text, "%.2f s", passed.count());
    return text;
}

void save(Picture& picture, const std::string& output) {
    std::string error;
    if (output != "-" ? picture.Save(output, &error) : picture.WriteTo(std::cout, &error)) return;
    if (output == "-") FinishOutput();
    throw Failure(kBadInput, error);
}

}  // namespace

void RunRender(const RenderOptions& options) {
    const auto start = std::chrono::steady_clock::now();
    const PictureFormat format = format_of(options);
    const std::string output = output_of(options, format);
    const LaidOutGraph laid_out(options.graph);
    std::string error;
    const std::unique_ptr<Picture> picture =
        cairo::MakePicture(format, laid_out.PictureSize(), options.scale, &error);
    if (picture == nullptr) throw Failure(kBadInput, output + ": " + error);
    picture->Draw([&](paintcore::IPainter& painter) { laid_out.Draw(painter, options.scale); });
    save(*picture, output);
    // A picture on standard output leaves no room for a line there.
    const bool is_file = output != "-";
    (is_file ? std::cout : std::cerr)
        << "wrote " << (is_file ? output : "standard output") << ": " << laid_out.Summary() << ", "
        << seconds_since(start) << (laid_out.IsNarrowed() ? "; --all shows every node" : "")
        << '\n';
    FinishOutput();
}

#else

void RunRender(const RenderOptions&) {
    throw Failure(kBadInput, "pictures need the Cairo backend, which is not in this build");
}

#endif

}  // namespace nodeline::cli
