# Finds the regular and the bold face of the font DejaVu Sans: DEJAVUSANS_FONT and DEJAVUSANS_BOLD_FONT.

set(font_places PATHS /usr/share/fonts /usr/local/share/fonts
    PATH_SUFFIXES truetype/dejavu dejavu-sans-fonts dejavu TTF)
find_file(DEJAVUSANS_FONT DejaVuSans.ttf ${font_places})
find_file(DEJAVUSANS_BOLD_FONT DejaVuSans-Bold.ttf ${font_places})

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(DejaVuSans REQUIRED_VARS DEJAVUSANS_FONT DEJAVUSANS_BOLD_FONT)
mark_as_advanced(DEJAVUSANS_FONT DEJAVUSANS_BOLD_FONT)
