// SPDX-License-Identifier: MIT
// gnuplot doesn't say when a disk is full, and draws on its standard output where it can't open a file. So it draws
// into a file beside the one that is wanted, which has been opened for a try before; only a picture that has its end
// goes into the other's place.

#include "reactor/DrawProfile.h"

#include <cstdint>
#include <string_view>
#include <vector>

#include "RunGnuplot.h"
#include "packagetext/ReadWhole.h"
#include "packagetext/ReplaceFile.h"
#include "platform/Files.h"
#include "text/Utf8.h"

namespace rekasim {

namespace {

/// A file beside another one, empty at first, and deleted at the end.
class CFileBeside {
public:
    explicit CFileBeside(const std::string& path) {
        for (int number = 0; name.empty() || !reka::Files().IsAbsent(reka::Utf16FromUtf8(name)); ++number) {
            if (number == mostNames) throw ReactorFailure(path + ": the folder is full of files that begin like it");
            name = path + ".drawn" + std::to_string(number);
        }
        std::string errorText;
        if (packagetext::ReplaceFile(reka::Files(), name, "", errorText)) return;
        throw ReactorFailure(path + errorText.substr(name.size()));  // the user knows only that one
    }
    ~CFileBeside() { reka::Files().Delete(reka::Utf16FromUtf8(name)); }
    CFileBeside(const CFileBeside&) = delete;
    CFileBeside& operator=(const CFileBeside&) = delete;

    const std::string& Name() const { return name; }

    std::vector<std::uint8_t> Content() const {
        const auto file = reka::Files().OpenForReading(reka::Utf16FromUtf8(name));
        return file ? packagetext::ReadWhole(*file) : std::vector<std::uint8_t>();
    }

private:
    static constexpr int mostNames = 100;
    std::string name;
};

/// Whether the picture has the end of its form.
bool IsWhole(std::string_view picture, PlotForm form) {
    using std::string_view_literals::operator""sv;
    if (form == PlotForm::Png) return picture.ends_with("IEND\xAE\x42\x60\x82"sv);
    return picture.substr(0, picture.find_last_not_of("\r\n") + 1).ends_with("</svg>");
}

}  // namespace

void DrawProfile(const ReactorProfile& profile, const std::string& title, const std::string& path) {
    const PlotForm form = path.ends_with(".png") ? PlotForm::Png : PlotForm::Svg;
    const CFileBeside drawn(path);
    if (!RunGnuplot(ProfilePlotScript(profile, title, form, drawn.Name()))) {
        throw ReactorFailure("gnuplot, which draws the plot, isn't there or can't write " + path);
    }
    const std::vector<std::uint8_t> picture = drawn.Content();
    if (!IsWhole({reinterpret_cast<const char*>(picture.data()), picture.size()}, form)) {
        throw ReactorFailure(path + ": the file can't be written: gnuplot left the plot unfinished, as on a full disk");
    }
    std::string errorText;
    if (!packagetext::ReplaceFile(reka::Files(), path, picture, errorText)) throw ReactorFailure(errorText);
}

}  // namespace rekasim
