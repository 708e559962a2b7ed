#pragma once
// The subcommands of the vantrel1 program. Each takes the arguments after its name and
// returns the process exit code.

namespace vantrel1::cli {

int RunVersion(int argc, char** argv);
int RunCrc(int argc, char** argv);
int RunConvert(int argc, char** argv);
int RunCatalogue(int argc, char** argv);
int RunRender(int argc, char** argv);

}  // namespace vantrel1::cli
