// What stands below the options in the help of the commands, in the user's language.
#pragma once

namespace app {

const char* MainFooter();
const char* ComputeFooter();
const char* BatchFooter();

}  // namespace app
