#include "convert/draft/Draft.h"

namespace convert {

Reading DraftOf(std::string_view, SoundFile&, const Spelling&, const Context&) { return Refused("not yet"); }

}  // namespace convert
