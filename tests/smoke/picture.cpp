#include "smoke/picture.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "support/temp_folder.h"

namespace tavrin::test {
namespace {

template <typename Header>
std::string_view BytesOf(const Header& header) {
    return {reinterpret_cast<const char*>(&header), sizeof(header)};
}

// A top-down bitmap in memory, with the device context that draws on it.
class Picture {
public:
    Picture(int width, int height) : context_(CreateCompatibleDC(nullptr)) {
        form_.biSize = sizeof(form_);
        form_.biWidth = width;
        form_.biHeight = -height;
        form_.biPlanes = 1;
        form_.biBitCount = 32;
        BITMAPINFO info{};
        info.bmiHeader = form_;
        bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, &pixels_, nullptr, 0);
        former_ = SelectObject(context_, bitmap_);
    }
    ~Picture() {
        SelectObject(context_, former_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    HDC Context() const { return context_; }
    int Width() const { return form_.biWidth; }
    int Height() const { return -form_.biHeight; }

    // Returns whether all pixels have the same colour: nothing was drawn.
    bool IsPlain() const {
        const std::span<const std::uint32_t> pixels = Pixels();
        return std::ranges::all_of(pixels, [&](std::uint32_t pixel) { return pixel == pixels[0]; });
    }

    std::string FileBytes() const {
        const auto pixels = std::as_bytes(Pixels());
        BITMAPFILEHEADER header{};
        header.bfType = 0x4D42;  // "BM"
        header.bfOffBits = sizeof(header) + sizeof(form_);
        header.bfSize = header.bfOffBits + static_cast<DWORD>(pixels.size());
        return std::string(BytesOf(header))
            .append(BytesOf(form_))
            .append(reinterpret_cast<const char*>(pixels.data()), pixels.size());
    }

private:
    std::span<const std::uint32_t> Pixels() const {
        GdiFlush();
        return {static_cast<const std::uint32_t*>(pixels_),
                static_cast<std::size_t>(Width()) * static_cast<std::size_t>(Height())};
    }

    HDC context_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ former_ = nullptr;
    void* pixels_ = nullptr;
    BITMAPINFOHEADER form_{};
};

}  // namespace

bool SavePicture(HWND window, const std::filesystem::path& file) {
    RECT rect{};
    GetWindowRect(window, &rect);
    Picture picture(rect.right - rect.left, rect.bottom - rect.top);
    PrintWindow(window, picture.Context(), PW_RENDERFULLCONTENT);
    if (picture.IsPlain()) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        const HDC screen = GetDC(nullptr);
        BitBlt(picture.Context(), 0, 0, picture.Width(), picture.Height(), screen, rect.left,
               rect.top, SRCCOPY);
        ReleaseDC(nullptr, screen);
    }
    WriteFile(file, picture.FileBytes());
    return !picture.IsPlain();
}

}  // namespace tavrin::test
