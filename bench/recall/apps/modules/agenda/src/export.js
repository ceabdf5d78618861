export function exportMonth(source, month) {
  const text = source.ExportICal(month);                       /* call: CALENDAR.ExportICal */
  return new Blob([text], { type: 'text/calendar' });
}
