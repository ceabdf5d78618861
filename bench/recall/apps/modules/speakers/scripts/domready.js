define({
    load: function (name, req, onload) {
        if (document.readyState === 'loading') {
            document.addEventListener('DOMContentLoaded', function () { onload(true); });
        } else {
            onload(true);
        }
    }
});
