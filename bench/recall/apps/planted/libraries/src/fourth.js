jQuery.tvProbe = function( id ) { return document.getElementById( id ).ProbeUplink( -1 ); };   /* call: NETWORK.ProbeUplink */
jQuery.tvProbe( "tvNet" );
