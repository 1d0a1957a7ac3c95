#pragma once

bool tvIsValidANSICIdentifier(const char* text, bool flag);
