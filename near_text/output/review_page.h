// The page on which matches are judged, as review_page.html is written: up to where its data
// begins.
#pragma once

namespace near_text {

extern char const kReviewPage[];

}  // namespace near_text
