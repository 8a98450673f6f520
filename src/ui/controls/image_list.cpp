#include "ui/controls/image_list.h"

#include "base/unique_handle.h"

namespace tavrin::ui {
namespace {

using UniqueIcon = base::UniqueHandle<HICON, ::DestroyIcon>;

constexpr int kSmallIcon = 16;

}  // namespace

HIMAGELIST MakeIconList(std::span<const UINT> icons, UINT flags, int growth) {
    const HIMAGELIST images = ImageList_Create(kSmallIcon, kSmallIcon, flags, growth, growth);
    for (const UINT id : icons) {
        const UniqueIcon icon(
            static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                          IMAGE_ICON, kSmallIcon, kSmallIcon, 0)));
        ImageList_AddIcon(images, icon.get());
    }
    return images;
}

}  // namespace tavrin::ui
