#include "engine/imaging_failure.h"

#include "form/text_numbers.h"

namespace pavoline {

Failure ImagingFailure(Session& session, const std::string& lastWords) {
  std::string text = String(session, kTextApplyFailed);
  if (!lastWords.empty()) text += "\n\n" + More(session, kMoreToolSaid) + "\n" + lastWords;
  return {text, String(session, kTextError), kErrorMessage, ExitCode::kImagingFailed};
}

}  // namespace pavoline
