#pragma once

namespace pendra::bench {

void measureSending();
void measureLists();

}  // namespace pendra::bench
