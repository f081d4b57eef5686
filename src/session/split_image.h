#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"

// An image split into files that small file systems hold. Its parts lie in one folder: "a.swm",
// "a2.swm", "a3.swm". Every part describes the editions, only all of them hold the files.
namespace pavoline {

// What the header of one file says of it.
struct ImagePart {
  unsigned number = 0, total = 0;  // from 1; an image in one file is 1 of 1
  std::string set;                 // the same bytes in all parts of one image
  std::uint64_t end = 0;           // bytes that the file has when it is whole
};

// Nothing for a file that is no image or cannot be read.
std::optional<ImagePart> ReadImagePart(Files& files, const std::string& path);

// The first part by the name of the part `number`: "D:\a.swm" for "D:\a3.swm" and 3. Empty where
// the name does not end in the number, or the file of that name is no first part of the same image.
std::string FirstPart(Files& files, const std::string& path, const ImagePart& part);

// The other parts that belong to the first one, in their order, whether they are there or not.
std::vector<std::string> FurtherParts(Files& files, const std::string& first);

// The first part of all that is not there, is cut short or belongs to another image; empty when
// the image is whole.
std::string LackingPart(Files& files, const std::string& first);

// Bytes of all parts that are there, up to one that lacks; 0 when the path is not the first part.
std::uint64_t SplitImageSize(Files& files, const std::string& path);

}  // namespace pavoline
