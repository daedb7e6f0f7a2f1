#pragma once

// Programs whose time passes ten times as fast (quick_clocks.cpp), so that what is not about real
// time need not wait for it.

#include <map>
#include <string>

namespace memwright::systest {

// Adds to a program's environment what makes its time pass quickly.
void pass_time_quickly(std::map<std::string, std::string>& environment);

}  // namespace memwright::systest
