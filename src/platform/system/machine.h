// What the program asks of the machine under the desktop; one source a system.
#pragma once
#include <string>
#include <vector>

#include "platform/system/desktop.h"

// The program's own file, whatever the name of its folder holds; empty where the system does not tell.
std::string ProgramFile();

// The volumes that a player knows, those that he has plugged in among them. Where they all hang below one root, his
// own folder `home` counts as one. No volume is waited for.
std::vector<Volume> MachineVolumes(const std::string& home);

// Waits for that long, no more than a few milliseconds longer.
void SleepSeconds(double seconds);

// Hands what the program has freed back to the system, which allocators else keep for the next time.
void GiveMemoryBack();
