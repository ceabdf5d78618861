const calendar = document.querySelector('#calendar');
calendar.MigrateEntries(2);                                    /* call: CALENDAR.MigrateEntries */
export { calendar };
