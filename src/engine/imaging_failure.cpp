#include "engine/imaging_failure.h"

#include "form/text_numbers.h"

namespace pavoline {

Failure ImagingFailure(Ground& ground, const std::string& lastWords) {
  std::string text = String(ground, kTextApplyFailed);
  if (!lastWords.empty()) text += "\n\n" + More(ground, kMoreToolSaid) + "\n" + lastWords;
  return {text, String(ground, kTextError), kErrorMessage, ExitCode::kImagingFailed};
}

}  // namespace pavoline
