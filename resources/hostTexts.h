// hostTexts.h: an English text for every number that the library asks its host for.
//
//   zkRegisterHostTexts();          // once, at the host's start; link zk::host_texts
//   CString title;
//   title.LoadString(47188);        // "Zentrika"
//
// A host that has texts of its own registers them afterwards (zkRegisterTexts):
// the newest table is asked first.
#pragma once

/// Registers the texts with the library. A further call puts them in front again.
void zkRegisterHostTexts();
