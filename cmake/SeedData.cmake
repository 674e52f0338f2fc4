# cmake -DFROM=... -DTO=... -P SeedData.cmake: copies the data files that the program reads and the user may
# edit, where they are missing.
file(GLOB palettes RELATIVE "${FROM}" "${FROM}/Palettes/*")
foreach(file ${palettes} Globals.XML "UI/Side by side.STL" "UI/Large text.STL" "UI/Large picture.STL")
  if(NOT EXISTS "${TO}/${file}")
    get_filename_component(folder "${file}" DIRECTORY)
    file(COPY "${FROM}/${file}" DESTINATION "${TO}/${folder}")
  endif()
endforeach()
